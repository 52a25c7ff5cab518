#include "export/controller_file.h"
#include "support/network_builder.h"
#include "support/temp_dir.h"

#include <sstream>

#include <gtest/gtest.h>

namespace velmora {
namespace {

using test::AddMapping;
using test::AddNode;
using test::AddParameter;
using test::EmptyNetwork;

std::string Export(const Network& network, bool expectComplete = true) {
    std::ostringstream out;
    const ControllerFileResult result = WriteControllerFile(network, out);
    EXPECT_EQ(result.Complete, expectComplete) << result.Reason;
    return out.str();
}

// The lines of one PDO block up to NMAP for the given fields, as the writer frames them.
std::string PdoHead(const std::string& mode, const std::string& bytes, const std::string& pcfg) {
    return "        PDO,TX,1\r\n                COB-ID,h181\r\n                MODO," + mode +
           "\r\n                BYTE," + bytes + "\r\n                PCFG,h" + pcfg +
           "\r\n                        COMM,0\r\n                        INH_TIME,0\r\n"
           "                        EVENT_TIME,0\r\n";
}

TEST(ControllerFile, WorkedExampleByteForByte) {
    const std::string expected =
        test::ReadFileBytes(VELMORA_TEST_DATA_DIR "/export/worked_example.cop");
    ASSERT_FALSE(expected.empty());
    const Network network = test::WorkedExampleNetwork();
    EXPECT_EQ(Export(network), expected);

    test::TempDir dir;
    const ControllerFileResult result = WriteControllerFile(network, "", dir.File("linea.cop"));
    EXPECT_TRUE(result.Complete);
    EXPECT_EQ(test::ReadFileBytes(dir.File("linea.cop")), expected);
}

TEST(ControllerFile, NodeAndPdoWalks) {
    Network network = EmptyNetwork();
    EXPECT_EQ(Export(network), ""); // node count 0: zero bytes

    AddNode(network, 0, 0, 0);
    EXPECT_EQ(Export(network), "NODO,1\r\n        CFGTO,0,0\r\n        NPAR,0\r\n");

    // No TX PDO: the walk to twice the TX count covers nothing, RX PDOs included.
    network = EmptyNetwork();
    AddNode(network, 0, 0, 2);
    EXPECT_EQ(Export(network), "NODO,1\r\n        CFGTO,0,0\r\n        NPAR,0\r\n");

    // One TX and three RX PDOs: entries 0 and 1 only, so TX 1 and RX 1.
    network = EmptyNetwork();
    AddNode(network, 0, 1, 3);
    const std::string text = Export(network);
    EXPECT_NE(text.find("PDO,TX,1\r\n"), std::string::npos);
    EXPECT_NE(text.find("PDO,RX,1\r\n"), std::string::npos);
    EXPECT_EQ(text.find("PDO,RX,2"), std::string::npos);

    // An unused entry produces no lines; NodeCount ends the walk before later nodes.
    network = EmptyNetwork();
    AddNode(network, 2, 1, 1).PdoAt(0).Used = 0;
    AddNode(network, 7, 0, 0);
    network.NodeCount = 1;
    EXPECT_EQ(Export(network).find("NODO,8"), std::string::npos);
    EXPECT_EQ(Export(network).find("PDO,TX"), std::string::npos);

    // A NodeCount above the nodes in use walks past slot 500: the file ends quietly after
    // every present node.
    network.NodeCount = 3;
    const std::string partial = Export(network, false);
    EXPECT_TRUE(partial.ends_with("NODO,8\r\n        CFGTO,0,0\r\n        NPAR,0\r\n"));
}

TEST(ControllerFile, PdoLineRules) {
    Network network = EmptyNetwork();
    Pdo& pdo = AddNode(network, 0, 1, 0).PdoAt(0);
    pdo.Settings.CobId = "181";
    AddMapping(pdo, "A", "6000", "1", "8");
    AddMapping(pdo, "B", "6000", "2", "8");
    const std::string mappings = "                        VCB,A\r\n"
                                 "                                OBJECT,h6000,1\r\n"
                                 "                                LEN,8\r\n"
                                 "                        VCB,B\r\n"
                                 "                                OBJECT,h6000,2\r\n"
                                 "                                LEN,8\r\n";
    const std::string tail = "        NPAR,0\r\n";
    const std::string head = "NODO,1\r\n        CFGTO,0,0\r\n";

    // "Disabilitato": mode Manual, no mapped objects whatever the table holds.
    pdo.Settings.Mode = "Disabilitato";
    EXPECT_EQ(Export(network),
              head + PdoHead("Manual", "0", "00") + "                NMAP,0\r\n" + tail);

    // NoMapping reports 0 but the mappings are still listed.
    pdo.Settings.Mode = "Fast";
    pdo.Block.NoMapping = kTrue;
    EXPECT_EQ(Export(network),
              head + PdoHead("Fast", "0", "00") + "                NMAP,0\r\n" + mappings + tail);

    // Byte count: blank gives 0, otherwise written untrimmed.
    pdo.Block.NoMapping = 0;
    for (const auto& [bytes, shown] :
         {std::pair{"", "0"}, std::pair{"   ", "0"}, std::pair{" 4", " 4"}}) {
        pdo.Settings.Bytes = bytes;
        EXPECT_NE(Export(network).find("BYTE," + std::string(shown) + "\r\n"), std::string::npos);
    }

    // PCFG digits: ":" for 10, no "F"; a negative mask floors its first digit.
    for (const auto& [mask, shown] :
         {std::pair{0, "00"}, std::pair{1, "01"}, std::pair{10, "0:"}, std::pair{15, "0E"},
          std::pair{16, "10"}, std::pair{26, "1:"}, std::pair{31, "1E"}, std::pair{-1, "/E"}}) {
        pdo.Settings.Pcfg = static_cast<std::int16_t>(mask);
        EXPECT_NE(Export(network).find("PCFG,h" + std::string(shown) + "\r\n"), std::string::npos)
            << mask;
    }
    // Masks above 255 give characters beyond "E", as single Windows-1252 bytes.
    pdo.Settings.Pcfg = 256;
    EXPECT_NE(Export(network).find("PCFG,hF0\r\n"), std::string::npos);
    pdo.Settings.Pcfg = 201 * 16;
    EXPECT_NE(Export(network).find("PCFG,h\xFF"
                                   "0\r\n"),
              std::string::npos);
    // A character code past 255 ends the file right before the PCFG line.
    pdo.Settings.Pcfg = 202 * 16;
    pdo.Settings.Bytes = "4";
    EXPECT_TRUE(Export(network, false).ends_with("BYTE,4\r\n"));
}

TEST(ControllerFile, MappingAndParameterWalks) {
    Network network = EmptyNetwork();
    Node& node = AddNode(network, 0, 1, 0, "Fast");
    Pdo& pdo = node.PdoAt(0);
    for (int k = 0; k <= kLastMapping; ++k) {
        AddMapping(pdo, "V", "6000", std::to_string(k), "8");
    }
    // Eleven used mappings are written in full.
    std::string text = Export(network);
    EXPECT_NE(text.find("NMAP,11\r\n"), std::string::npos);
    EXPECT_NE(text.find("OBJECT,h6000,10\r\n"), std::string::npos);

    // A MappingCount beyond the table reads mapping 11: the file ends after mapping 10.
    pdo.Settings.MappingCount = 12;
    text = Export(network, false);
    EXPECT_TRUE(text.ends_with("OBJECT,h6000,10\r\n                                LEN,8\r\n"));

    // The first unused mapping ends the walk; a MappingCount of 1 stops it earlier.
    pdo.Settings.MappingCount = 11;
    pdo.Settings.Mappings[1].Used = 0;
    text = Export(network);
    EXPECT_NE(text.find("OBJECT,h6000,0\r\n"), std::string::npos);
    EXPECT_EQ(text.find("OBJECT,h6000,2"), std::string::npos);

    // Parameters stop at the first unused entry, whatever NPAR says.
    AddParameter(node, "a", "2000", "0", "1", "7");
    AddParameter(node, "b", "2001", "0", "2", "8");
    AddParameter(node, "c", "2002", "0", "4", "9");
    AddParameter(node, "d", "2003", "0", "4", "10");
    node.Parameters[2].Used = 0;
    text = Export(network);
    EXPECT_TRUE(text.ends_with("        NPAR,4\r\n"
                               "                OBJ,h2000,0\r\n"
                               "                NBYTE,1\r\n"
                               "                VAL,7\r\n"
                               "                OBJ,h2001,0\r\n"
                               "                NBYTE,2\r\n"
                               "                VAL,8\r\n"));
}

TEST(ControllerFile, TextsAreWindows1252AndFailuresAreReported) {
    Network network = EmptyNetwork();
    Node& node = AddNode(network, 0, 0, 0);
    AddParameter(node, "x", "2000", "0", "1", "Velocità €");
    EXPECT_TRUE(Export(network).ends_with("VAL,Velocit\xE0 \x80\r\n"));

    // A stream that refuses the bytes.
    std::ostringstream broken;
    broken.setstate(std::ios::badbit);
    EXPECT_FALSE(WriteControllerFile(network, broken).Complete);

    // A path that cannot be created: not complete, with a reason.
    test::TempDir dir;
    const ControllerFileResult result = WriteControllerFile(network, dir.Folder(), "no/x.cop");
    EXPECT_FALSE(result.Complete);
    EXPECT_FALSE(result.Reason.empty());
}

} // namespace
} // namespace velmora
