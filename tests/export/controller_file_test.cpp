#include "export/controller_file.h"
#include "support/network_builder.h"
#include "support/temp_dir.h"

#include <sstream>
#include <vector>

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

bool Has(const std::string& text, const std::string& line) {
    return text.find(line + "\r\n") != std::string::npos;
}

TEST(ControllerFile, WorkedExampleByteForByte) {
    const std::string expected =
        test::ReadFileBytes(VELMORA_TEST_DATA_DIR "/export/worked_example.cop");
    ASSERT_FALSE(expected.empty());
    test::TempDir dir;
    const Network network = test::WorkedExampleNetwork();
    EXPECT_TRUE(WriteControllerFile(network, "", dir.File("linea.cop")).Complete);
    EXPECT_EQ(test::ReadFileBytes(dir.File("linea.cop")), expected);
}

TEST(ControllerFile, NodeAndPdoWalks) {
    Network network = EmptyNetwork();
    EXPECT_EQ(Export(network), ""); // node count 0: zero bytes
    // One TX and three RX PDOs: twice the TX count covers entries 0 and 1 only.
    AddNode(network, 0, 1, 3);
    const std::string text = Export(network);
    EXPECT_TRUE(Has(text, "        PDO,TX,1") && Has(text, "        PDO,RX,1"));
    EXPECT_FALSE(Has(text, "        PDO,RX,2"));

    // A NodeCount above the nodes in use walks past slot 500: a quiet end after them all.
    network.NodeCount = 2;
    EXPECT_EQ(Export(network, false), text);
}

TEST(ControllerFile, PdoLineRules) {
    Network network = EmptyNetwork();
    Pdo& pdo = AddNode(network, 0, 1, 0, "Disabilitato").PdoAt(0);
    AddMapping(pdo, "A", "6000", "1", "8");
    AddMapping(pdo, "B", "6000", "2", "8");
    pdo.Settings.Bytes = "   ";

    // "Disabilitato": mode Manual and no mapped objects whatever the table holds. A blank
    // byte count is written as 0.
    std::string text = Export(network);
    EXPECT_TRUE(Has(text, "                MODO,Manual") && Has(text, "                NMAP,0"));
    EXPECT_TRUE(Has(text, "                BYTE,0"));
    EXPECT_FALSE(Has(text, "                        VCB,A"));
    // NoMapping reports 0 mappings but still lists them.
    pdo.Settings.Mode = "Fast";
    pdo.Block.NoMapping = kTrue;
    text = Export(network);
    EXPECT_TRUE(Has(text, "                NMAP,0\r\n                        VCB,A"));
    EXPECT_TRUE(Has(text, "                                OBJECT,h6000,2"));

    // PCFG digits: ":" for 10, "E" for 15, a negative mask floors its first digit, and 255
    // is the last character code.
    for (const auto& [mask, shown] : {std::pair{10, "0:"}, {-1, "/E"}, {201 * 16, "\xFF\x30"}}) {
        pdo.Settings.Pcfg = static_cast<std::int16_t>(mask);
        EXPECT_TRUE(Has(Export(network), "                PCFG,h" + std::string(shown))) << mask;
    }
    // A code past 255 ends the file right before the PCFG line; BYTE is written untrimmed.
    pdo.Settings.Bytes = " 4";
    pdo.Settings.Pcfg = 202 * 16;
    EXPECT_TRUE(Export(network, false).ends_with("BYTE, 4\r\n"));
}

TEST(ControllerFile, MappingAndParameterWalks) {
    Network network = EmptyNetwork();
    Node& node = AddNode(network, 0, 1, 0, "Fast");
    Pdo& pdo = node.PdoAt(0);
    for (int k = 0; k <= kLastMapping; ++k) {
        AddMapping(pdo, "V", "6000", std::to_string(k), "8");
    }
    // A MappingCount beyond the table reads mapping 11: the file ends after mapping 10.
    pdo.Settings.MappingCount = 12;
    EXPECT_TRUE(Export(network, false)
                    .ends_with("OBJECT,h6000,10\r\n"
                               "                                LEN,8\r\n"));
    // The first unused mapping ends the walk.
    pdo.Settings.MappingCount = 11;
    pdo.Settings.Mappings[1].Used = 0;
    EXPECT_FALSE(Has(Export(network), "                                OBJECT,h6000,2"));

    // Parameters stop at the first unused entry, whatever NPAR says.
    for (const char* value : {"7", "8", "9"}) {
        AddParameter(node, "p", "2000", "0", "1", value);
    }
    node.Parameters[1].Used = 0;
    EXPECT_TRUE(Export(network).ends_with("        NPAR,3\r\n"
                                          "                OBJ,h2000,0\r\n"
                                          "                NBYTE,1\r\n"
                                          "                VAL,7\r\n"));
}

TEST(ControllerFile, TextsAreWindows1252AndFailuresAreReported) {
    Network network = EmptyNetwork();
    AddParameter(AddNode(network, 0, 0, 0), "x", "2000", "0", "1", "Velocità €");
    EXPECT_TRUE(Export(network).ends_with("VAL,Velocit\xE0 \x80\r\n"));

    std::ostringstream broken;
    broken.setstate(std::ios::badbit);
    EXPECT_FALSE(WriteControllerFile(network, broken).Complete);

}

TEST(ControllerFile, AFileThatCannotBeWrittenWholeKeepsWhatItHeld) {
    test::TempDir dir;
    const std::string path = dir.File("linea.cop");
    test::WriteFileBytes(path, "vecchio");
    const Network network = test::WorkedExampleNetwork();
    // The disk fills up, or a NodeCount above the nodes in use walks past slot 500 after
    // writing them all.
    ControllerFileResult result =
        WriteControllerFile(network, "", path, FileWriter::FullAfter(100));
    EXPECT_FALSE(result.Complete);
    EXPECT_EQ(result.Reason, "Errore di accesso al percorso/file: " + path +
                                 ": scrittura del file non riuscita (No space left on device): "
                                 "il file precedente non è stato modificato");
    Network tooMany = network;
    tooMany.NodeCount = 2;
    result = WriteControllerFile(tooMany, "", path);
    EXPECT_FALSE(result.Complete);
    EXPECT_EQ(result.Reason.rfind("Indice non compreso nell'intervallo: " + path + ": ", 0), 0u)
        << result.Reason;
    EXPECT_EQ(test::ReadFileBytes(path), "vecchio");
    EXPECT_EQ(dir.Names(), std::vector<std::string>{"linea.cop"});

    result = WriteControllerFile(network, dir.Folder(), "no/x.cop");
    EXPECT_FALSE(result.Complete);
    EXPECT_NE(result.Reason.find(dir.File("no/x.cop")), std::string::npos);
}

} // namespace
} // namespace velmora
