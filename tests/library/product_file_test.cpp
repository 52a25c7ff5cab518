#include "library/product_file.h"
#include "model/runtime_error.h"
#include "storage/configuration_file.h"
#include "storage/record_io.h"
#include "support/network_builder.h"

#include <sstream>

#include <gtest/gtest.h>

namespace velmora {
namespace {

constexpr std::size_t kRecord = kConfigurationRecordLength;

// The node of the worked example, with a few more fields filled.
const Node& Product() {
    static const Node node = [] {
        Node made = test::WorkedExampleNetwork().NodeAt(4);
        made.EdsName = "drive";
        made.PdoAt(0).Settings.MappingAt(10).Vcb = "Velocità"; // Windows-1252 in the file
        made.Reserved = 77;
        return made;
    }();
    return node;
}

// A product file whose mark record is mark instead of the library's own.
std::string WithMark(const Node& mark) {
    RecordWriter writer(kRecord);
    WriteNodeRecord(writer, mark);
    return writer.Bytes() + ProductFileBytes(Product()).substr(kRecord);
}

TEST(ProductFile, KeepsEveryFieldOfTheNode) {
    const Node product = Product();
    const std::string bytes = ProductFileBytes(product);
    ASSERT_EQ(bytes.size(), 2 * kRecord);
    // The mark record starts with "Velmora libreria" and the format number 1.
    EXPECT_EQ(bytes.substr(0, 20), std::string("\x10\x00Velmora libreria\x01\x00", 20));

    Node read;
    ReadProductFile(bytes, "/lib/Azionamenti/drive.libs", read);
    EXPECT_EQ(read, product);
    EXPECT_EQ(ReadProductSummary(bytes, "x"), (ProductSummary{"drive", 2, 1, 1}));
    EXPECT_EQ(ReadProductSummary(bytes, "x").EdsFile(), "drive.eds");
}

TEST(ProductFile, RefusesADamagedOrForeignFileWithItsPathAndReason) {
    const std::string good = ProductFileBytes(Product());
    std::string hugeName = good;
    hugeName[kRecord] = '\xFF'; // the node's EdsName claims 65535 bytes
    hugeName[kRecord + 1] = '\xFF';
    std::string hugeMark = good;
    hugeMark[0] = '\xF0';
    Node nextFormat;
    nextFormat.EdsName = kProductMark;
    nextFormat.TxPdoCount = 2;
    Node configurationMark; // the first record of a ".nodi" file
    configurationMark.Parameters[3].Value = "1";
    configurationMark.Parameters[4].Value = "1";
    configurationMark.Parameters[5].Value = "0";
    Node tooManyPdos = Product();
    tooManyPdos.TxPdoCount = 40;
    tooManyPdos.RxPdoCount = 12;
    Node negativeCount = Product();
    negativeCount.RxPdoCount = -1;
    Node tooManyParameters = Product();
    tooManyParameters.ParameterCount = 102;
    Node freeSlot = Product();
    freeSlot.InUse = 0;

    const struct {
        std::string bytes;
        const char* reason;
    } cases[] = {
        {"", "file troncato (0 byte invece di 30608)"},
        {good.substr(0, good.size() - 1), "file troncato (30607 byte invece di 30608)"},
        {good + '\0', "dati in più dopo i 30608 byte del prodotto"},
        {WithMark(configurationMark), "non è un prodotto della libreria"},
        {hugeMark, "non è un prodotto della libreria"},
        {WithMark(nextFormat), "prodotto nel formato 2, questa versione legge il formato 1"},
        {hugeName, "record del nodo danneggiato"},
        {ProductFileBytes(tooManyPdos), "numero di PDO non valido (TX 40, RX 12)"},
        {ProductFileBytes(negativeCount), "numero di PDO non valido (TX 2, RX -1)"},
        {ProductFileBytes(tooManyParameters), "numero di parametri non valido (102)"},
        {ProductFileBytes(freeSlot), "il record non contiene un nodo"},
    };
    const Node untouched = Product();
    for (const auto& c : cases) {
        SCOPED_TRACE(c.reason);
        Node node = untouched;
        try {
            ReadProductFile(c.bytes, "/lib/Azionamenti/drive.libs", node);
            ADD_FAILURE() << "accepted";
        } catch (const RuntimeError& error) {
            EXPECT_NE(std::string(error.what())
                          .find("/lib/Azionamenti/drive.libs: " + std::string(c.reason)),
                      std::string::npos)
                << error.what();
        }
        EXPECT_EQ(node, untouched);
        EXPECT_THROW(ReadProductSummary(c.bytes, "x"), RuntimeError);
    }
}

} // namespace
} // namespace velmora
