#include "model/runtime_error.h"
#include "session/workspace.h"
#include "storage/configuration_file.h"
#include "storage/record_io.h"
#include "support/temp_dir.h"

#include <filesystem>

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

void FillNode(Network& network, int slot, const std::string& name) {
    Node& node = network.NodeAt(slot);
    node.EdsName = name;
    node.InUse = kTrue;
    node.Expanded = kTrue;
    node.Configured = kTrue;
    node.TxPdoCount = 1;
    node.RxPdoCount = 1;
    node.ParameterCount = 1;
    node.Reserved = -123456;
    node.repetitions = 3;
    node.repetitionTime = -100;
    for (int p = 0; p <= kLastPdo; ++p) {
        Pdo& pdo = node.PdoAt(p);
        pdo.OwnerSlot = static_cast<std::int16_t>(slot);
        pdo.Note = name;
    }
    Pdo& tx = node.PdoAt(0);
    tx.Direction = "TX";
    tx.Used = kTrue;
    tx.DefaultCobId = "18A";
    tx.PdoNumber = 0;
    tx.Block.NoMapping = kTrue;
    tx.Settings.Mode = "Fast";
    tx.Settings.CobId = "18a";
    tx.Settings.Bytes = " 4";
    tx.Settings.Pcfg = 31;
    tx.Settings.MappingCount = 2;
    tx.Settings.Mappings[0] = {"Velocità", "606c", "0", "32", kTrue};
    tx.Settings.Mappings[1] = {"Stato €", "6041", "0", "16", kTrue};
    node.PdoAt(1).Direction = "RX";
    node.PdoAt(1).Settings.Mode = "Slow";
    node.Parameters[0] = {"Modes of operation", "6060", "0", "1", "1", kTrue};
}

TEST(ConfigurationFile, EmptyNetworkWritesTheMarkAndTheSettingsOnly) {
    TempDir dir;
    Workspace workspace;
    StartEmpty(workspace);
    workspace.Net.MaxFastPdo() = 12;
    SaveConfiguration(workspace.Net, dir.Folder(), "rete.nodi");

    const std::string bytes = ReadFileBytes(dir.File("rete.nodi"));
    ASSERT_EQ(bytes.size(), 2 * kRecord);
    // A short string: its length as a 16-bit little-endian word, then its bytes.
    const auto counted = [](const std::string& text) {
        return std::string{static_cast<char>(text.size()), '\0'} + text;
    };
    // Mark: every string empty except the Value of parameters 3, 4 and 5 (each parameter
    // is five strings and a word; Value is its fifth string).
    const std::size_t parameter3 = 2 + 14 + 51 * 148 + 3 * 12 + 8;
    EXPECT_EQ(bytes.substr(parameter3, 3), counted("1"));
    EXPECT_EQ(bytes.substr(parameter3 + 13, 3), counted("1"));
    EXPECT_EQ(bytes.substr(parameter3 + 26, 3), counted("0"));
    EXPECT_EQ(bytes.find_first_not_of('\0', parameter3 + 29), kRecord); // filler is zero
    // Settings: DefaultFilePath, then MaxFastPdo.
    EXPECT_EQ(bytes.substr(kRecord, 26),
              counted("/opt/velmora/none.cop") + std::string("\x0C\0\0", 3));
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
    StartEmpty(workspace);
    FillNode(workspace.Net, 4, "drive");
    FillNode(workspace.Net, 9, "io_è");
    FillNode(workspace.Net, kLastSlot, "last");
    workspace.Net.NodeCount = 3;
    SaveConfiguration(workspace.Net, dir.Folder(), "impianto.nodi");
    const std::string first = ReadFileBytes(dir.File("impianto.nodi"));
    EXPECT_EQ(first.size(), 5 * kRecord);

    Workspace loaded;
    StartEmpty(loaded);
    LoadIntoWorkspace(loaded, dir.Folder(), "impianto.nodi");
    workspace.Net.ExportPath = dir.Folder() + "impianto.cop";
    EXPECT_EQ(loaded.Net, workspace.Net);
    // Three configured nodes, one fast TX and one slow RX PDO each.
    EXPECT_EQ(loaded.Channels.txFast, 3);
    EXPECT_EQ(loaded.Channels.rxSlow, 3);
    EXPECT_EQ(loaded.Channels.rxFast, 0);

    // A plain save rewrites the same file, after removing a stray "impianto.nodi.nodi".
    test::WriteFileBytes(dir.File("impianto.nodi.nodi"), "old");
    SaveConfiguration(loaded.Net, "", "");
    EXPECT_EQ(ReadFileBytes(dir.File("impianto.nodi")), first);
    EXPECT_FALSE(std::filesystem::exists(dir.File("impianto.nodi.nodi")));

    // Only PDO 0's OwnerSlot says where a record goes.
    loaded.Net.NodeAt(9).PdoAt(0).OwnerSlot = 20;
    SaveConfiguration(loaded.Net, "", "");
    LoadIntoWorkspace(loaded, dir.Folder(), "impianto.nodi");
    EXPECT_EQ(loaded.Net.NodeAt(9).InUse, 0);
    EXPECT_EQ(loaded.Net.NodeAt(20).EdsName, "io_è");
}

TEST(ConfigurationFile, SaveFailuresLeaveTheRecordsWrittenAndSavedClear) {
    TempDir dir;
    Workspace workspace;
    StartEmpty(workspace);
    FillNode(workspace.Net, 1, "ok");
    FillNode(workspace.Net, 2, "big");
    // 8784 bytes of empty record leave 6520 for the texts of one node.
    workspace.Net.NodeAt(2).Parameters[7].Value = std::string(7000, 'v');
    workspace.Net.NodeCount = 2;
    try {
        SaveConfiguration(workspace.Net, dir.Folder(), "a.nodi");
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Code(), ErrorCode::BadRecordLength);
    }
    EXPECT_EQ(ReadFileBytes(dir.File("a.nodi")).size(), 3 * kRecord);
    EXPECT_EQ(workspace.Net.Saved, 0);

    // A NodeCount above the nodes in use walks past slot 500 after writing them all.
    workspace.Net.NodeAt(2).Parameters[7].Value.clear();
    workspace.Net.NodeCount = 3;
    try {
        SaveConfiguration(workspace.Net, "", "");
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Code(), ErrorCode::SubscriptOutOfRange);
    }
    EXPECT_EQ(ReadFileBytes(dir.File("a.nodi")).size(), 4 * kRecord);

    workspace.Net.NodeCount = 2;
    EXPECT_THROW(SaveConfiguration(workspace.Net, dir.Folder() + "missing/", "a.nodi"),
                 RuntimeError);
    EXPECT_THROW(SaveConfiguration(workspace.Net, dir.Folder(), ""), RuntimeError);
}

class HostileFile : public ::testing::Test {
protected:
    void SetUp() override {
        Workspace workspace;
        StartEmpty(workspace);
        FillNode(workspace.Net, 4, "a");
        FillNode(workspace.Net, 9, "b");
        workspace.Net.NodeCount = 2;
        SaveConfiguration(workspace.Net, dir_.Folder(), "good.nodi");
        good_ = ReadFileBytes(dir_.File("good.nodi"));
        StartEmpty(loaded_);
    }

    // Loads bytes as a file; returns the error code, or nullopt when it loaded.
    std::optional<ErrorCode> Load(const std::string& bytes) {
        WriteFileBytes(dir_.File("bad.nodi"), bytes);
        try {
            LoadIntoWorkspace(loaded_, dir_.Folder(), "bad.nodi");
            return std::nullopt;
        } catch (const RuntimeError& error) {
            return error.Code();
        }
    }

    TempDir dir_;
    std::string good_;
    Workspace loaded_;
};

TEST_F(HostileFile, TruncatedFilesKeepTheCompleteRecordsAndFail) {
    EXPECT_EQ(Load(good_.substr(0, 3 * kRecord + 100)), ErrorCode::BadRecordLength);
    EXPECT_EQ(loaded_.Net.NodeAt(4).EdsName, "a");
    EXPECT_EQ(loaded_.Net.NodeAt(9).InUse, 0);

    StartEmpty(loaded_);
    EXPECT_EQ(Load(good_.substr(0, kRecord + 7)), ErrorCode::BadRecordLength);
    EXPECT_EQ(loaded_.Net.NodeAt(4).InUse, 0);
}

TEST_F(HostileFile, FilesWithoutTheMarkAreRefusedBeforeAnythingChanges) {
    loaded_.Net.NodeAt(3).EdsName = "kept";
    EXPECT_EQ(Load(""), ErrorCode::UnsupportedFormat);
    EXPECT_EQ(Load(good_.substr(0, 5000)), ErrorCode::UnsupportedFormat);
    std::string earlier = good_;
    const std::size_t parameter5 = 2 + 14 + 51 * 148 + 3 * 12 + 8 + 26;
    earlier[parameter5 + 2] = '1'; // "1", "1", "1"
    EXPECT_EQ(IsCurrentFormat(dir_.File("good.nodi")), 1);
    EXPECT_EQ(Load(earlier), ErrorCode::UnsupportedFormat);
    EXPECT_EQ(loaded_.Net.NodeAt(3).EdsName, "kept");
}

TEST_F(HostileFile, BadFieldsAndBadSlotsStopTheLoad) {
    std::string longString = good_;
    longString[2 * kRecord] = '\xFF'; // EdsName of the first node claims 65535 bytes
    longString[2 * kRecord + 1] = '\xFF';
    EXPECT_EQ(Load(longString), ErrorCode::BadRecordLength);

    std::string badSlot = good_;
    // Node b: EdsName "b", seven words, then PDO 0: "18A", Used, Note "b", "TX", OwnerSlot.
    const std::size_t ownerSlot = 3 * kRecord + (2 + 1) + 14 + (2 + 3) + 2 + (2 + 1) + (2 + 2);
    ASSERT_EQ(badSlot[ownerSlot], 9);
    badSlot[ownerSlot] = static_cast<char>(9999 & 0xFF);
    badSlot[ownerSlot + 1] = static_cast<char>(9999 >> 8);
    EXPECT_EQ(Load(badSlot), ErrorCode::SubscriptOutOfRange);
    EXPECT_EQ(loaded_.Net.NodeAt(4).EdsName, "a"); // stored before the failure

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
