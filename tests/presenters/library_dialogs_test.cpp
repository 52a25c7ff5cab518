#include "library/product_library.h"
#include "model/runtime_error.h"
#include "presenters/library_insert_dialog.h"
#include "presenters/library_manager.h"
#include "presenters/save_to_library_dialog.h"
#include "support/app_fixture.h"
#include "support/scripted_alerts.h"
#include "support/scripted_dialogs.h"
#include "tree/network_tree.h"

#include <filesystem>

#include <gtest/gtest.h>

namespace velmora {
namespace {

// The fixture's drive as node 5, with one parameter, and the library of its application
// folder.
class LibraryDialogs : public ::testing::Test {
protected:
    LibraryDialogs() {
        Node& drive = app_.AddDrive(4);
        drive.ParameterAt(0) = {"Modes of operation", "6060", "0", "1", "1", kTrue};
        drive.ParameterCount = 1;
    }

    ProductLibrary Library() const { return ProductLibrary(LibraryDirectory(app_.AppDir())); }

    test::AppFixture app_;
    test::ScriptedDialogs dialogs_;
    test::ScriptedAlerts alerts_;
    NetworkTree tree_;
};

TEST_F(LibraryDialogs, SaveOffersTheCategoriesAndAsksBeforeReplacing) {
    SaveToLibraryDialog dialog{app_.Ws(), dialogs_};
    EXPECT_THROW(dialog.Open(0), RuntimeError); // a free slot
    dialog.Open(4);
    EXPECT_TRUE(dialog.Categories().empty());
    EXPECT_EQ(dialog.NameText(), "drive");
    dialog.CategoryText() = ".x";
    EXPECT_EQ(dialog.Ok(), DialogResult{});
    EXPECT_EQ(dialogs_.shown.back(),
              "Inform: Errore | Nome della categoria non valido (\".x\"): non può cominciare "
              "con \".\"");
    dialog.CategoryText() = "Azionamenti"; // a new category
    EXPECT_EQ(dialog.Ok(), (DialogResult{false, true}));

    dialog.Open(4);
    EXPECT_EQ(dialog.Categories(), std::vector<std::string>{"Azionamenti"});
    EXPECT_EQ(dialog.CategoryText(), "Azionamenti");
    dialogs_.yesNoAnswers = {false, true};
    EXPECT_EQ(dialog.Ok(), DialogResult{});
    EXPECT_EQ(dialogs_.shown.back(), "YesNo: Salva nodo in libreria | Il prodotto \"drive\" "
                                     "esiste già nella categoria \"Azionamenti\". Sostituirlo?");
    EXPECT_EQ(dialog.Ok(), (DialogResult{false, true}));
    EXPECT_EQ(Library().List().Categories[0].Products[0].Summary.ParameterCount, 1);
}

TEST_F(LibraryDialogs, InsertGathersProductsAndCopiesAtSuccessiveFreeNumbers) {
    ASSERT_TRUE(Library().Save("Azionamenti", "drive", app_.Ws().Net.NodeAt(4), false).Done());
    app_.AddDrive(7); // node 8 is taken
    LibraryInsertDialog dialog{app_.Ws(), tree_, alerts_, dialogs_};
    dialog.Open();
    ASSERT_EQ(dialog.Library().Categories.size(), 1u);
    EXPECT_EQ(dialog.Details(), "");
    EXPECT_FALSE(dialog.Add());
    EXPECT_EQ(alerts_.shown.back().Line1, "Selezionare un prodotto dalla libreria");
    dialog.Select(0, 0);
    EXPECT_EQ(dialog.Details(), "EDS: drive.eds\nPDO TX: 2\nPDO RX: 1\nParametri: 1");
    EXPECT_THROW(dialog.Select(0, 1), RuntimeError);

    dialog.NumberText() = "5"; // occupied: refused as the add-node dialog refuses it
    EXPECT_EQ(dialog.Ok(), DialogResult{});
    EXPECT_EQ(alerts_.shown.back().Source + " " + alerts_.shown.back().Line1,
              "libWin Il nodo 5 è già occupato da drive");
    dialog.RemoveEntry(0);
    dialog.NumberText() = "7";
    dialog.CopiesText() = "3";
    ASSERT_TRUE(dialog.Add());
    dialog.NumberText() = "9";
    dialog.CopiesText() = "1";
    ASSERT_TRUE(dialog.Add());
    EXPECT_EQ(dialog.Entries()[0], (LibraryInsertEntry{"Azionamenti", "drive", 7, 3}));
    // Copies at 7, 9 and 10; the second entry asks for 9 too: nothing is inserted.
    EXPECT_EQ(dialog.Ok(), DialogResult{});
    EXPECT_EQ(alerts_.shown.back().Line1, "Il nodo 9 è già occupato da drive");
    EXPECT_EQ(app_.Ws().Net.NodeCount, 2);
    dialog.RemoveEntry(1);
    EXPECT_EQ(dialog.Ok(), (DialogResult{true, true}));
    const Network& net = app_.Ws().Net;
    EXPECT_EQ(net.NodeCount, 5);
    for (int slot : {6, 8, 9}) {
        EXPECT_EQ(net.NodeAt(slot).ParameterCount, 1) << slot;
        EXPECT_EQ(net.NodeAt(slot).PdoAt(0).OwnerSlot, slot);
    }
    EXPECT_EQ(tree_.CollapseOnRebuild(), 1);

    std::filesystem::remove(app_.AppDir() + "/eds/drive.eds");
    dialog.Open();
    dialog.Select(0, 0);
    dialog.NumberText() = "20";
    EXPECT_EQ(dialog.Ok(), DialogResult{});
    EXPECT_EQ(dialogs_.shown.back(), "Inform: Errore | Eds non trovato:drive.eds");
}

TEST_F(LibraryDialogs, ManagerShowsTheDiskAndAsksBeforeRemoving) {
    LibraryManager manager{app_.Ws(), dialogs_};
    EXPECT_TRUE(manager.CreateCategory("Azionamenti"));
    EXPECT_FALSE(manager.CreateCategory("Azionamenti"));
    EXPECT_EQ(dialogs_.shown.back(), "Inform: Errore | La categoria \"Azionamenti\" esiste già");
    EXPECT_TRUE(manager.CreateCategory("Motori"));
    // Saved by another program (here, the library directly): shown after a refresh.
    ASSERT_TRUE(Library().Save("Azionamenti", "drive", app_.Ws().Net.NodeAt(4), false).Done());
    EXPECT_TRUE(manager.Library().Categories[0].Products.empty());
    manager.Refresh();
    ASSERT_EQ(manager.Library().Categories[0].Products.size(), 1u);

    EXPECT_TRUE(manager.RenameProduct("Azionamenti", "drive", "Asse X"));
    EXPECT_TRUE(manager.MoveProduct("Azionamenti", "Asse X", "Motori"));
    EXPECT_EQ(manager.Library().Categories[1].Products[0].Name, "Asse X");
    dialogs_.yesNoAnswers = {false, true, true};
    EXPECT_FALSE(manager.RemoveProduct("Motori", "Asse X"));
    EXPECT_EQ(dialogs_.shown.back(), "YesNo: Modifica nodo in libreria | Rimuovere il "
                                     "prodotto \"Asse X\" dalla categoria \"Motori\"?");
    EXPECT_TRUE(manager.RemoveProduct("Motori", "Asse X"));
    EXPECT_TRUE(manager.RemoveCategory("Motori"));
    EXPECT_TRUE(manager.RenameCategory("Azionamenti", "Drive"));
    ASSERT_EQ(manager.Library().Categories.size(), 1u);
    EXPECT_EQ(manager.Library().Categories[0].Name, "Drive");
}

} // namespace
} // namespace velmora
