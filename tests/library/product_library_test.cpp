#include "library/product_library.h"
#include "model/network.h"
#include "model/runtime_error.h"
#include "support/temp_dir.h"

#include <filesystem>

#include <gtest/gtest.h>

namespace velmora {
namespace {

Node Drive(std::string_view edsName = "drive", int tx = 2, int rx = 1) {
    Node node;
    node.EdsName = edsName;
    node.InUse = kTrue;
    node.TxPdoCount = static_cast<std::int16_t>(tx);
    node.RxPdoCount = static_cast<std::int16_t>(rx);
    return node;
}

// The listing as "category: product(eds tx rx parameters) ..." lines.
std::string Shown(const LibraryListing& listing) {
    std::string text;
    for (const LibraryCategory& category : listing.Categories) {
        text += category.Name + ":";
        for (const LibraryProduct& product : category.Products) {
            const ProductSummary& s = product.Summary;
            text += " " + product.Name + "(" + s.EdsFile() + " " + std::to_string(s.TxPdoCount) +
                    " " + std::to_string(s.RxPdoCount) + " " + std::to_string(s.ParameterCount) +
                    ")";
        }
        text += "\n";
    }
    return text;
}

TEST(ProductLibrary, SavesListsAndLoadsProductsAsTheFolderHoldsThem) {
    test::TempDir app;
    const ProductLibrary library(LibraryDirectory(app.Path()));
    EXPECT_EQ(Shown(library.List()), ""); // no lib/ folder yet

    EXPECT_TRUE(library.Save("Azionamenti", "drive", Drive(), false).Done());
    EXPECT_TRUE(library.Save("Azionamenti", "Asse X", Drive("axis", 4, 4), false).Done());
    EXPECT_TRUE(library.Save("I-O", "ingressi", Drive("io16", 1, 0), false).Done());
    EXPECT_EQ(Shown(library.List()), "Azionamenti: Asse X(axis.eds 4 4 0) drive(drive.eds 2 1 0)\n"
                                     "I-O: ingressi(io16.eds 1 0 0)\n");
    EXPECT_TRUE(std::filesystem::is_regular_file(app.File("lib/I-O/ingressi.libs")));

    // Replacing needs the caller's consent.
    EXPECT_EQ(library.Save("I-O", "ingressi", Drive("io32", 2, 0), false),
              (LibraryOutcome{LibraryStatus::Exists,
                              "Il prodotto \"ingressi\" esiste già nella categoria \"I-O\""}));
    EXPECT_TRUE(library.Save("I-O", "ingressi", Drive("io32", 2, 0), true).Done());
    Node loaded;
    EXPECT_TRUE(library.Load("I-O", "ingressi", loaded).Done());
    EXPECT_EQ(loaded, Drive("io32", 2, 0));
    EXPECT_EQ(library.Load("I-O", "uscite", loaded).Message,
              "Il prodotto \"uscite\" non esiste nella categoria \"I-O\"");
    EXPECT_EQ(library.Load("Encoder", "x", loaded).Message, "La categoria \"Encoder\" non esiste");

    // Another program's changes show at the next listing; a damaged file is named and the
    // others are still listed; hidden folders and other files are not products.
    std::filesystem::create_directories(app.File("lib/Encoder"));
    std::filesystem::create_directories(app.File("lib/.cache"));
    std::filesystem::copy_file(app.File("lib/I-O/ingressi.libs"),
                               app.File("lib/Encoder/enc.libs"));
    test::WriteFileBytes(app.File("lib/Encoder/rotto.libs"), "rotto");
    test::WriteFileBytes(app.File("lib/Encoder/note.txt"), "");
    std::filesystem::remove(app.File("lib/Azionamenti/drive.libs"));
    const LibraryListing listing = library.List();
    EXPECT_EQ(Shown(listing), "Azionamenti: Asse X(axis.eds 4 4 0)\n"
                              "Encoder: enc(io32.eds 2 0 0)\n"
                              "I-O: ingressi(io32.eds 2 0 0)\n");
    ASSERT_EQ(listing.Problems.size(), 1u);
    EXPECT_NE(listing.Problems[0].find(app.File("lib/Encoder/rotto.libs") + ": file troncato"),
              std::string::npos);
    EXPECT_EQ(library.Categories(), (std::vector<std::string>{"Azionamenti", "Encoder", "I-O"}));
    EXPECT_THROW(library.Load("Encoder", "rotto", loaded), RuntimeError);
    EXPECT_EQ(loaded, Drive("io32", 2, 0));
}

TEST(ProductLibrary, RenamesMovesAndRemovesProductsAndCategories) {
    test::TempDir app;
    const ProductLibrary library(LibraryDirectory(app.Path()));
    ASSERT_TRUE(library.Save("Azionamenti", "drive", Drive(), false).Done());
    ASSERT_TRUE(library.Save("Azionamenti", "axis", Drive(), false).Done());

    EXPECT_EQ(library.RenameProduct("Azionamenti", "drive", "axis").Status, LibraryStatus::Exists);
    EXPECT_TRUE(library.RenameProduct("Azionamenti", "drive", "Asse Y").Done());
    EXPECT_EQ(library.CreateCategory("Azionamenti").Message,
              "La categoria \"Azionamenti\" esiste già");
    EXPECT_TRUE(library.CreateCategory("Motori").Done());
    EXPECT_EQ(library.MoveProduct("Azionamenti", "axis", "Encoder").Message,
              "La categoria \"Encoder\" non esiste");
    EXPECT_TRUE(library.MoveProduct("Azionamenti", "axis", "Motori").Done());
    EXPECT_EQ(library.RemoveCategory("Motori").Message, "La categoria \"Motori\" non è vuota");
    EXPECT_TRUE(library.RemoveProduct("Motori", "axis").Done());
    EXPECT_EQ(library.RemoveProduct("Motori", "axis").Status, LibraryStatus::Refused);
    EXPECT_TRUE(library.RemoveCategory("Motori").Done());
    EXPECT_TRUE(library.RenameCategory("Azionamenti", "Drive").Done());
    EXPECT_EQ(Shown(library.List()), "Drive: Asse Y(drive.eds 2 1 0)\n");
}

TEST(ProductLibrary, RefusesNamesThatCannotBeFileNamesAndSaysWhy) {
    const struct {
        std::string name;
        const char* problem;
    } cases[] = {
        {"", "è vuoto"},
        {".nascosto", "non può cominciare con \".\""},
        {"a/b", "non può contenere \"/\""},
        {"a\\b", "non può contenere \"\\\""},
        {"a\tb", "non può contenere caratteri di controllo"},
        {std::string(251, 'x'), "è troppo lungo per un nome di file (251 byte, al massimo 250)"},
    };
    test::TempDir app;
    const ProductLibrary library(LibraryDirectory(app.Path()));
    for (const auto& c : cases) {
        EXPECT_EQ(NameProblem(c.name).value_or("accettato"), c.problem);
        EXPECT_EQ(library.Save(c.name, "drive", Drive(), false),
                  (LibraryOutcome{LibraryStatus::Refused, "Nome della categoria non valido (\"" +
                                                              c.name + "\"): " + c.problem}));
        EXPECT_EQ(library.Save("Azionamenti", c.name, Drive(), false).Message,
                  "Nome del prodotto non valido (\"" + c.name + "\"): " + c.problem);
    }
    EXPECT_FALSE(NameProblem("Asse X (v2.1) – è"));
    EXPECT_FALSE(std::filesystem::exists(app.File("lib")));
}

} // namespace
} // namespace velmora
