// The layers of the program, lowest first: a source may include its own folder and the
// folders of lower layers, never a higher one. This test reads the quoted include lines of
// every source of the program and names each one that runs upwards.

#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

// Folder -> layer rank. Folders of one rank may not include each other either, except
// where the rank is shared on purpose (none today).
const std::map<std::string, int>& Ranks() {
    static const std::map<std::string, int> ranks = {
        {"model", 0},     {"pdo", 1},     {"eds", 2},        {"storage", 3}, {"export", 4},
        {"tree", 5},      {"library", 6}, {"interfaces", 7}, {"session", 8}, {"presenters", 9},
        {"commands", 10}, {"ui", 11},     {"app", 12},
    };
    return ranks;
}

// The quoted include's folder ("eds" for "eds/eds_reader.h"), or "" for another form.
std::string IncludedFolder(const std::string& line) {
    const std::string directive = "#include \"";
    const std::size_t start = line.find_first_not_of(" \t");
    if (start == std::string::npos || line.compare(start, directive.size(), directive) != 0) {
        return {};
    }
    const std::size_t begin = start + directive.size();
    const std::size_t slash = line.find('/', begin);
    const std::size_t quote = line.find('"', begin);
    if (slash == std::string::npos || quote == std::string::npos || slash > quote) {
        return {};
    }
    return line.substr(begin, slash - begin);
}

// Every upward include of the sources under root, as "file:line: includes folder".
std::vector<std::string> UpwardIncludes(const std::filesystem::path& root) {
    std::vector<std::string> found;
    for (const auto& [folder, rank] : Ranks()) {
        const std::filesystem::path dir = root / folder;
        if (!std::filesystem::is_directory(dir)) {
            continue;
        }
        for (const auto& entry : std::filesystem::recursive_directory_iterator(dir)) {
            const std::string extension = entry.path().extension().string();
            if (extension != ".h" && extension != ".cpp") {
                continue;
            }
            std::ifstream in(entry.path());
            std::string line;
            for (int number = 1; std::getline(in, line); ++number) {
                const auto included = Ranks().find(IncludedFolder(line));
                if (included != Ranks().end() && included->second > rank) {
                    found.push_back(std::filesystem::relative(entry.path(), root).string() + ":" +
                                    std::to_string(number) + ": includes " + included->first +
                                    "/");
                }
            }
        }
    }
    return found;
}

TEST(Layers, NoSourceIncludesAHigherLayer) {
    std::string report;
    for (const std::string& include : UpwardIncludes(VELMORA_SOURCE_DIR)) {
        report += include + "\n";
    }
    EXPECT_EQ(report, "");
}

TEST(Layers, AnUpwardIncludeIsNamedWithItsLine) {
    const std::filesystem::path root =
        std::filesystem::temp_directory_path() / "velmora_layers_test";
    std::filesystem::remove_all(root);
    std::filesystem::create_directories(root / "pdo");
    std::ofstream(root / "pdo" / "rule.cpp") << "#include \"pdo/rule.h\"\n"
                                                "#include \"model/text.h\"\n"
                                                "  #include \"session/workspace.h\"\n"
                                                "#include <string>\n";
    EXPECT_EQ(UpwardIncludes(root), std::vector<std::string>{"pdo/rule.cpp:3: includes session/"});
    std::filesystem::remove_all(root);
}

} // namespace
