#include "model/runtime_error.h"
#include "session/workspace.h"
#include "storage/configuration_file.h"
#include "support/golden_network.h"
#include "support/temp_dir.h"

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace velmora {
namespace {

using test::ReadFileBytes;
using test::TempDir;
using test::WriteFileBytes;

constexpr std::size_t kRecord = kConfigurationRecordLength;

// A workspace in the state start-up leaves it in.
void StartEmpty(Workspace& workspace) {
    workspace.AppDirectory = "/opt/velmora";
    SetExportExtension(workspace.Net);
    NewNetwork(workspace.Net, workspace.AppDirectory);
}

// golden.nodi was written once by SaveConfiguration from GoldenNetwork() and checked byte by
// byte against the record layout: the file, not the code, says where each field goes.
std::string GoldenBytes() {
    return ReadFileBytes(VELMORA_TEST_DATA_DIR "/configuration/golden.nodi");
}

// Offsets in golden.nodi, checked by hand.
constexpr std::size_t kMarkZeroValue = 7636; // record 1: the "0" of Parameters[5].Value
constexpr std::size_t kFullNodeRecord = 2 * kRecord;
constexpr std::size_t kFullNodeOwnerSlot = kFullNodeRecord + 61; // PDO 0's OwnerSlot, 6

// The first position where a and b differ, npos when they are equal.
std::size_t FirstDifference(const std::string& a, const std::string& b) {
    const auto [inA, inB] = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
    return inA == a.end() && inB == b.end() ? std::string::npos
                                            : static_cast<std::size_t>(inA - a.begin());
}

TEST(ConfigurationFile, GoldenFileLoadsIntoTheGoldenNetworkAndSavesBackByteForByte) {
    const std::string golden = GoldenBytes();
    ASSERT_EQ(golden.size(), 4 * kRecord);
    const Network built = test::GoldenNetwork();
    std::ostringstream written;
    WriteConfiguration(built, written);
    EXPECT_EQ(FirstDifference(written.str(), golden), std::string::npos);

    Network loaded = test::EmptyNetwork("/opt/velmora");
    std::istringstream in(golden);
    LoadConfiguration(loaded, "/opt/velmora", in, "/cfg/", "golden.nodi");
    EXPECT_TRUE(loaded.NodeAt(test::kGoldenFullSlot) == built.NodeAt(test::kGoldenFullSlot));
    EXPECT_TRUE(loaded.Nodes == built.Nodes);
    EXPECT_TRUE(loaded.ExportSettings == built.ExportSettings);
    EXPECT_EQ(loaded.NodeCount, 2);

    std::ostringstream saved;
    WriteConfiguration(loaded, saved);
    EXPECT_EQ(FirstDifference(saved.str(), golden), std::string::npos);
}

TEST(ConfigurationFile, EmptyNetworkWritesTheMarkAndTheSettingsOnly) {
    TempDir dir;
    Workspace workspace;
    StartEmpty(workspace);
    workspace.Net.MaxFastPdo() = 12;
    SaveConfiguration(workspace.Net, dir.Folder(), "rete.nodi");
    // The golden file starts with the same two records.
    EXPECT_EQ(FirstDifference(ReadFileBytes(dir.File("rete.nodi")),
                              GoldenBytes().substr(0, 2 * kRecord)),
              std::string::npos);
    EXPECT_EQ(workspace.Net.Saved, kTrue);

    Workspace loaded;
    StartEmpty(loaded);
    LoadIntoWorkspace(loaded, dir.Folder(), "rete.nodi");
    EXPECT_EQ(loaded.Net.NodeCount, 0);
    EXPECT_EQ(loaded.Net.MaxFastPdo(), 12);
    EXPECT_EQ(IsCurrentFormat(dir.File("rete.nodi")), 1);
}

TEST(ConfigurationFile, SavedNetworkLoadsBackIdenticalAndSavesToIdenticalBytes) {
    TempDir dir;
    Workspace workspace;
    workspace.AppDirectory = "/opt/velmora";
    workspace.Net = test::GoldenNetwork();
    test::AddNode(workspace.Net, kLastSlot, 1, 1, "Fast", "ultimo");
    SaveConfiguration(workspace.Net, dir.Folder(), "impianto.nodi");
    const std::string first = ReadFileBytes(dir.File("impianto.nodi"));
    EXPECT_EQ(first.size(), 5 * kRecord);

    Workspace loaded;
    StartEmpty(loaded);
    LoadIntoWorkspace(loaded, dir.Folder(), "impianto.nodi");
    workspace.Net.ExportPath = dir.Folder() + "impianto.cop";
    EXPECT_TRUE(loaded.Net == workspace.Net);
    // The configured nodes: node 7 with a fast TX and a slow RX PDO, node 501 with two fast.
    EXPECT_EQ(loaded.Channels.txFast, 2);
    EXPECT_EQ(loaded.Channels.rxFast, 1);
    EXPECT_EQ(loaded.Channels.rxSlow, 1);

    // A plain save rewrites the same file, after removing a stray "impianto.nodi.nodi".
    test::WriteFileBytes(dir.File("impianto.nodi.nodi"), "old");
    SaveConfiguration(loaded.Net, "", "");
    EXPECT_EQ(ReadFileBytes(dir.File("impianto.nodi")), first);
    EXPECT_FALSE(std::filesystem::exists(dir.File("impianto.nodi.nodi")));

    // Only PDO 0's OwnerSlot says where a record goes.
    loaded.Net.NodeAt(test::kGoldenBareSlot).PdoAt(0).OwnerSlot = 20;
    SaveConfiguration(loaded.Net, "", "");
    LoadIntoWorkspace(loaded, dir.Folder(), "impianto.nodi");
    EXPECT_EQ(loaded.Net.NodeAt(test::kGoldenBareSlot).InUse, 0);
    EXPECT_EQ(loaded.Net.NodeAt(20).EdsName, "io_€");
}

TEST(ConfigurationFile, AFailedSaveLeavesTheFileAndTheNetworkAsTheyWere) {
    TempDir dir;
    const std::string path = dir.File("a.nodi");
    WriteFileBytes(path, "vecchio");
    Network network = test::GoldenNetwork();
    const auto failure = [&](const FileWriter& files) {
        try {
            SaveConfiguration(network, dir.Folder(), "a.nodi", files);
        } catch (const RuntimeError& error) {
            EXPECT_EQ(ReadFileBytes(path), "vecchio");
            EXPECT_EQ(dir.Names(), std::vector<std::string>{"a.nodi"});
            EXPECT_EQ(network.Saved, 0);
            EXPECT_EQ(network.FileName, "Senza nome.eds");
            return std::make_pair(error.Code(), std::string(error.what()));
        }
        return std::make_pair(ErrorCode::InvalidArgument, std::string("nessun errore"));
    };

    // The disk fills up in the middle of record 3.
    EXPECT_EQ(failure(FileWriter::FullAfter(2 * kRecord + 100)).second,
              "Errore di accesso al percorso/file: " + path +
                  ": scrittura del record non riuscita (No space left on device): il file "
                  "precedente non è stato modificato");
    // Record 4 does not fit its 15304 bytes: 8784 bytes of empty record leave 6520 for the
    // texts of one node.
    std::string& value = network.NodeAt(test::kGoldenBareSlot).Parameters[7].Value;
    value = std::string(7000, 'v');
    EXPECT_EQ(failure(FileWriter()).first, ErrorCode::BadRecordLength);
    value.clear();
    // A NodeCount above the nodes in use walks past slot 500 after writing them all.
    network.NodeCount = 3;
    EXPECT_EQ(failure(FileWriter()).first, ErrorCode::SubscriptOutOfRange);
    network.NodeCount = 2;
    EXPECT_THROW(SaveConfiguration(network, dir.Folder() + "missing/", "a.nodi"), RuntimeError);
    EXPECT_THROW(SaveConfiguration(network, dir.Folder(), ""), RuntimeError);
    EXPECT_EQ(dir.Names(), std::vector<std::string>{"a.nodi"});
}

// Damaged copies of the golden file, loaded over a network that holds the golden one.
class HostileFile : public ::testing::Test {
protected:
    void SetUp() override {
        good_ = GoldenBytes();
        WriteFileBytes(dir_.File("good.nodi"), good_);
        StartEmpty(loaded_);
        LoadIntoWorkspace(loaded_, dir_.Folder(), "good.nodi");
        before_ = loaded_.Net;
    }

    // Loads bytes as a file; returns the error code, or nullopt when it loaded. A load that
    // fails names the file and leaves the network as it was.
    std::optional<ErrorCode> Load(const std::string& bytes) {
        WriteFileBytes(dir_.File("bad.nodi"), bytes);
        try {
            LoadIntoWorkspace(loaded_, dir_.Folder(), "bad.nodi");
            return std::nullopt;
        } catch (const RuntimeError& error) {
            EXPECT_NE(std::string(error.what()).find(dir_.File("bad.nodi")), std::string::npos)
                << error.what();
            EXPECT_TRUE(loaded_.Net == before_);
            return error.Code();
        }
    }

    TempDir dir_;
    std::string good_;
    Workspace loaded_;
    Network before_;
};

TEST_F(HostileFile, TruncatedFilesAreRefusedWhole) {
    EXPECT_EQ(Load(good_.substr(0, 3 * kRecord + 100)), ErrorCode::BadRecordLength);
    EXPECT_EQ(Load(good_.substr(0, kRecord + 7)), ErrorCode::BadRecordLength);
}

TEST_F(HostileFile, FilesWithoutTheMarkAreRefused) {
    EXPECT_EQ(Load(""), ErrorCode::UnsupportedFormat);
    EXPECT_EQ(Load(good_.substr(0, 5000)), ErrorCode::UnsupportedFormat);
    std::string earlier = good_;
    earlier[kMarkZeroValue] = '1'; // "1", "1", "1"
    EXPECT_EQ(IsCurrentFormat(dir_.File("good.nodi")), 1);
    EXPECT_EQ(Load(earlier), ErrorCode::UnsupportedFormat);
}

TEST_F(HostileFile, BadFieldsAndBadSlotsStopTheLoad) {
    // The last node record is the bad one, so the good ones before it were read already.
    std::string longString = good_;
    longString[3 * kRecord] = '\xFF'; // EdsName of the second node claims 65535 bytes
    longString[3 * kRecord + 1] = '\xFF';
    EXPECT_EQ(Load(longString), ErrorCode::BadRecordLength);

    std::string badSlot = good_ + good_.substr(kFullNodeRecord, kRecord);
    const std::size_t ownerSlot = kFullNodeOwnerSlot + 2 * kRecord;
    ASSERT_EQ(badSlot[ownerSlot], test::kGoldenFullSlot);
    badSlot[ownerSlot] = static_cast<char>(9999 & 0xFF);
    badSlot[ownerSlot + 1] = static_cast<char>(9999 >> 8);
    EXPECT_EQ(Load(badSlot), ErrorCode::SubscriptOutOfRange);

    std::string dirty = good_; // non-zero filler is ignored
    dirty[kRecord - 1] = 'z';
    dirty[3 * kRecord - 1] = 'z';
    EXPECT_EQ(Load(dirty), std::nullopt);
    EXPECT_EQ(loaded_.Net.NodeCount, 2);
}

TEST_F(HostileFile, MissingFilesAndFoldersAreRunTimeErrors) {
    std::filesystem::create_directory(dir_.File("folder.nodi"));
    EXPECT_THROW(LoadIntoWorkspace(loaded_, dir_.Folder(), "folder.nodi"), RuntimeError);
    EXPECT_THROW(LoadIntoWorkspace(loaded_, dir_.Folder(), "missing.nodi"), RuntimeError);
    EXPECT_THROW(IsCurrentFormat(dir_.File("missing.nodi")), RuntimeError);
    EXPECT_TRUE(loaded_.Net == before_);
}

TEST(ConfigurationFile, ConfigurationNameDerivesTheExportPath) {
    Network network;
    SetConfigurationName(network, "C:\\cfg\\", "rete.nodi");
    EXPECT_EQ(network.ExportPath, "C:\\cfg\\rete.cop");
    EXPECT_EQ(network.Directory, "C:\\cfg\\");
    EXPECT_EQ(network.FileName, "rete.nodi");
    EXPECT_EQ(DeriveExportPath("D:\\x\\", "a.cfg"), "D:\\x\\.cop");
    EXPECT_EQ(DeriveExportPath("/x/", "città.nodi"), "/x/città.cop");
    EXPECT_THROW(SetConfigurationName(network, "/x/", "a.no"), RuntimeError);
}

} // namespace
} // namespace velmora
