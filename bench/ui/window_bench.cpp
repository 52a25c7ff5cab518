// The window's figures, offscreen: start-up to the window shown, and the tree of the largest
// network (501 nodes, 77,656 items) rebuilt, shown and laid out, collapsed and with every
// item expanded.

#include "bench/full_network.h"
#include "commands/main_commands.h"
#include "interfaces/settings_store.h"
#include "interfaces/text_viewer.h"
#include "session/workspace.h"
#include "ui/alert_window.h"
#include "ui/dialog_launcher.h"
#include "ui/main_window.h"
#include "ui/qt_user_dialogs.h"
#include "ui/qt_viewers.h"

#include <memory>

#include <QApplication>
#include <QScrollBar>
#include <QTreeView>
#include <benchmark/benchmark.h>

namespace {

struct NoSettings : velmora::SettingsStore {
    void Write(const std::string&, const std::string&, const std::string&) override {}
};

struct NoDialogs : velmora::DialogLauncher {
    bool Open(const velmora::DialogRequest&, QWidget*) override { return false; }
};

// Everything the program's main builds, in the same order.
struct Program {
    velmora::Workspace workspace;
    velmora::QtUserDialogs dialogs;
    velmora::AlertWindow alerts;
    velmora::QtTextViewer viewer;
    velmora::QtHelpViewer help{"/tmp"};
    velmora::MainCommands commands{workspace, dialogs, alerts, viewer, help};
    NoDialogs launcher;
    std::unique_ptr<velmora::MainWindow> window;

    Program() {
        velmora::StartWorkspace(workspace, "/tmp/velmora-bench");
        NoSettings settings;
        commands.StartUp(settings, "", "");
        window = std::make_unique<velmora::MainWindow>(workspace, commands, dialogs, launcher);
        window->show();
        QApplication::processEvents();
    }
};

// Lays the tree out and paints what is visible, as the first frame after a change does.
void LayOut(velmora::MainWindow& window) {
    QTreeView* tree = window.TreeView();
    tree->doItemsLayout();
    tree->verticalScrollBar()->setValue(tree->verticalScrollBar()->maximum());
    tree->viewport()->repaint();
}

void BM_StartUpToWindowShown(benchmark::State& state) {
    for (auto _ : state) {
        Program program;
        benchmark::DoNotOptimize(program.window.get());
    }
}
BENCHMARK(BM_StartUpToWindowShown)->Unit(benchmark::kMillisecond);

void BM_FullNetworkTreeShown(benchmark::State& state) {
    Program program;
    program.workspace.Net = velmora::bench::FullNetwork();
    const bool expanded = state.range(0) != 0;
    for (int slot = 0; slot <= velmora::kLastSlot; ++slot) {
        velmora::Node& node = program.workspace.Net.NodeAt(slot);
        node.Expanded = expanded ? velmora::kTrue : 0;
        node.ParameterFolderExpanded = expanded ? velmora::kTrue : 0;
    }
    for (auto _ : state) {
        program.commands.RebuildTree();
        program.window->Refresh();
        LayOut(*program.window);
    }
    state.counters["items"] = program.commands.Tree().Size();
}
BENCHMARK(BM_FullNetworkTreeShown)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
