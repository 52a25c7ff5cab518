#include "library/product_library.h"

#include "model/network.h"
#include "model/paths.h"
#include "model/runtime_error.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace velmora {

namespace fs = std::filesystem;

namespace {

// A file name may hold 255 bytes; a product's name also carries ".libs".
inline constexpr std::size_t kLongestName = 255 - kProductExtension.size();

LibraryOutcome Outcome(LibraryStatus status, std::string message) {
    return {status, std::move(message)};
}

std::string Quoted(std::string_view name) {
    return "\"" + std::string(name) + "\"";
}

// The refusal of a bad category or product name, nullopt for a good one.
std::optional<LibraryOutcome> BadName(std::string_view name, const char* what) {
    if (const auto problem = NameProblem(name)) {
        return Outcome(LibraryStatus::Refused, std::string("Nome ") + what + " non valido (" +
                                                   Quoted(name) + "): " + *problem);
    }
    return std::nullopt;
}

std::optional<LibraryOutcome> BadNames(std::string_view category, std::string_view name) {
    if (auto bad = BadName(category, "della categoria")) {
        return bad;
    }
    return BadName(name, "del prodotto");
}

bool IsDirectory(const std::string& path) {
    std::error_code error;
    return fs::is_directory(ToFsPath(path), error);
}

bool Exists(const std::string& path) {
    std::error_code error;
    return fs::exists(ToFsPath(path), error);
}

[[noreturn]] void Failed(const std::string& what, const std::error_code& error) {
    throw RuntimeError(ErrorCode::PathFileAccess, what + ": " + error.message());
}

void Rename(const std::string& from, const std::string& to) {
    std::error_code error;
    fs::rename(ToFsPath(from), ToFsPath(to), error);
    if (error) {
        Failed(from + " -> " + to, error);
    }
}

LibraryOutcome MissingCategory(std::string_view category) {
    return Outcome(LibraryStatus::Refused, "La categoria " + Quoted(category) + " non esiste");
}

LibraryOutcome MissingProduct(std::string_view category, std::string_view name) {
    return Outcome(LibraryStatus::Refused, "Il prodotto " + Quoted(name) +
                                               " non esiste nella categoria " + Quoted(category));
}

LibraryOutcome ExistingProduct(std::string_view category, std::string_view name) {
    return Outcome(LibraryStatus::Exists, "Il prodotto " + Quoted(name) +
                                              " esiste già nella categoria " + Quoted(category));
}

// The entries of folder that are folders (products false) or product files (products
// true), by name (a product without its extension), sorted; names that are not valid are
// left out.
std::vector<std::string> Entries(const std::string& folder, bool products) {
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator it(ToFsPath(folder), error), end; !error && it != end;
         it.increment(error)) {
        std::error_code typeError;
        std::string name = FromFsPath(it->path().filename());
        if (products) {
            if (!it->is_regular_file(typeError) || name.size() <= kProductExtension.size() ||
                !name.ends_with(kProductExtension)) {
                continue;
            }
            name.resize(name.size() - kProductExtension.size());
        } else if (!it->is_directory(typeError)) {
            continue;
        }
        if (!NameProblem(name)) {
            names.push_back(std::move(name));
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace

std::string LibraryDirectory(const std::string& appDirectory) {
    return appDirectory + kPathSeparator + "lib" + kPathSeparator;
}

std::optional<std::string> NameProblem(std::string_view name) {
    if (name.empty()) {
        return "è vuoto";
    }
    if (name.front() == '.') {
        return "non può cominciare con \".\"";
    }
    for (const char c : name) {
        if (c == '/' || c == '\\') {
            return std::string("non può contenere \"") + c + "\"";
        }
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) {
            return "non può contenere caratteri di controllo";
        }
    }
    if (name.size() > kLongestName) {
        return "è troppo lungo per un nome di file (" + std::to_string(name.size()) +
               " byte, al massimo " + std::to_string(kLongestName) + ")";
    }
    return std::nullopt;
}

ProductLibrary::ProductLibrary(std::string directory) : directory_(std::move(directory)) {
    if (directory_.empty() || !IsPathSeparator(directory_.back())) {
        directory_ += kPathSeparator;
    }
}

std::string ProductLibrary::CategoryPath(std::string_view category) const {
    return directory_ + std::string(category);
}

std::string ProductLibrary::ProductPath(std::string_view category, std::string_view name) const {
    return CategoryPath(category) + kPathSeparator + std::string(name) +
           std::string(kProductExtension);
}

std::optional<LibraryOutcome> ProductLibrary::RefuseUnlessThere(std::string_view category,
                                                                std::string_view name) const {
    if (auto bad = BadNames(category, name)) {
        return bad;
    }
    if (!IsExistingFile(ProductPath(category, name))) {
        return IsDirectory(CategoryPath(category)) ? MissingProduct(category, name)
                                                   : MissingCategory(category);
    }
    return std::nullopt;
}

LibraryListing ProductLibrary::List() const {
    LibraryListing listing;
    std::string bytes;
    for (std::string& category : Categories()) {
        LibraryCategory& entry = listing.Categories.emplace_back();
        for (std::string& name : Entries(CategoryPath(category), true)) {
            const std::string path = ProductPath(category, name);
            try {
                ReadProductBytes(path, bytes);
                ProductSummary summary = ReadProductSummary(bytes, path);
                entry.Products.push_back({std::move(name), std::move(summary)});
            } catch (const RuntimeError& error) {
                listing.Problems.push_back(error.what());
            }
        }
        entry.Name = std::move(category);
    }
    return listing;
}

std::vector<std::string> ProductLibrary::Categories() const {
    return Entries(directory_, false);
}

LibraryOutcome ProductLibrary::Save(std::string_view category, std::string_view name,
                                    const Node& node, bool replace) const {
    if (auto bad = BadNames(category, name)) {
        return *bad;
    }
    const std::string path = ProductPath(category, name);
    if (!replace && Exists(path)) {
        return ExistingProduct(category, name);
    }
    const std::string bytes = ProductFileBytes(node);
    std::error_code error;
    fs::create_directories(ToFsPath(CategoryPath(category)), error);
    if (error) {
        Failed(CategoryPath(category), error);
    }
    WriteProductBytes(path, bytes);
    return {};
}

LibraryOutcome ProductLibrary::Load(std::string_view category, std::string_view name,
                                    Node& node) const {
    if (auto refused = RefuseUnlessThere(category, name)) {
        return *refused;
    }
    const std::string path = ProductPath(category, name);
    std::string bytes;
    ReadProductBytes(path, bytes);
    ReadProductFile(bytes, path, node);
    return {};
}

LibraryOutcome ProductLibrary::RemoveProduct(std::string_view category,
                                             std::string_view name) const {
    if (auto refused = RefuseUnlessThere(category, name)) {
        return *refused;
    }
    const std::string path = ProductPath(category, name);
    std::error_code error;
    fs::remove(ToFsPath(path), error);
    if (error) {
        Failed(path, error);
    }
    return {};
}

LibraryOutcome ProductLibrary::RenameProduct(std::string_view category, std::string_view name,
                                             std::string_view newName) const {
    if (auto refused = RefuseUnlessThere(category, name)) {
        return *refused;
    }
    if (auto bad = BadName(newName, "del prodotto")) {
        return *bad;
    }
    const std::string from = ProductPath(category, name);
    const std::string to = ProductPath(category, newName);
    if (newName != name && Exists(to)) {
        return ExistingProduct(category, newName);
    }
    Rename(from, to);
    return {};
}

LibraryOutcome ProductLibrary::MoveProduct(std::string_view category, std::string_view name,
                                           std::string_view toCategory) const {
    if (auto refused = RefuseUnlessThere(category, name)) {
        return *refused;
    }
    if (auto bad = BadName(toCategory, "della categoria")) {
        return *bad;
    }
    const std::string from = ProductPath(category, name);
    if (!IsDirectory(CategoryPath(toCategory))) {
        return MissingCategory(toCategory);
    }
    const std::string to = ProductPath(toCategory, name);
    if (toCategory == category) {
        return {};
    }
    if (Exists(to)) {
        return ExistingProduct(toCategory, name);
    }
    Rename(from, to);
    return {};
}

LibraryOutcome ProductLibrary::CreateCategory(std::string_view category) const {
    if (auto bad = BadName(category, "della categoria")) {
        return *bad;
    }
    const std::string path = CategoryPath(category);
    if (Exists(path)) {
        return Outcome(LibraryStatus::Exists, "La categoria " + Quoted(category) + " esiste già");
    }
    std::error_code error;
    fs::create_directories(ToFsPath(path), error);
    if (error) {
        Failed(path, error);
    }
    return {};
}

LibraryOutcome ProductLibrary::RemoveCategory(std::string_view category) const {
    if (auto bad = BadName(category, "della categoria")) {
        return *bad;
    }
    const std::string path = CategoryPath(category);
    if (!IsDirectory(path)) {
        return MissingCategory(category);
    }
    std::error_code error;
    if (!fs::is_empty(ToFsPath(path), error) || error) {
        return Outcome(LibraryStatus::Refused,
                       "La categoria " + Quoted(category) + " non è vuota");
    }
    fs::remove(ToFsPath(path), error);
    if (error) {
        Failed(path, error);
    }
    return {};
}

LibraryOutcome ProductLibrary::RenameCategory(std::string_view category,
                                              std::string_view newName) const {
    if (auto bad = BadName(category, "della categoria")) {
        return *bad;
    }
    if (auto bad = BadName(newName, "della categoria")) {
        return *bad;
    }
    if (!IsDirectory(CategoryPath(category))) {
        return MissingCategory(category);
    }
    if (newName != category && Exists(CategoryPath(newName))) {
        return Outcome(LibraryStatus::Exists, "La categoria " + Quoted(newName) + " esiste già");
    }
    Rename(CategoryPath(category), CategoryPath(newName));
    return {};
}

} // namespace velmora
