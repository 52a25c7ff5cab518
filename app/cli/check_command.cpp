// velmora-cli check CONFIG.nodi [--baud R] [--json]: the channel check ("Test PDO").

#include "cli/cli.h"
#include "cli/configuration_loading.h"
#include "cli/json_writer.h"
#include "export/channel_analysis.h"
#include "session/export_commands.h"
#include "session/workspace.h"

#include <algorithm>
#include <iterator>

#include <QCommandLineParser>

namespace velmora::cli {

namespace {

constexpr const char* kUsage =
    "Uso: velmora-cli check CONFIG.nodi [--baud 125|250|500|1000] [--json]\n\n"
    "Carica CONFIG.nodi ed esegue l'analisi dei canali: totali dei PDO fast e slow, tempo\n"
    "stimato di un ciclo fast alla velocità scelta (500 kbit/s se non indicata) e verdetto.\n\n"
    "Opzioni:\n"
    "  --baud R   velocità in kbit/s: 125, 250, 500 o 1000\n"
    "  --json     stampa il risultato come JSON\n"
    "  -h, --help mostra questo aiuto\n\n"
    "Uscita: 0 esportazione permessa, 1 errore, 3 esportazione rifiutata.\n";

void PrintText(const ChannelDialogState& dialog, std::ostream& out) {
    out << ChannelTexts::TxFastLabel << ' ' << dialog.TxFast << '\n'
        << ChannelTexts::TxSlowLabel << ' ' << dialog.TxSlow << '\n'
        << ChannelTexts::RxFastLabel << ' ' << dialog.RxFast << '\n'
        << ChannelTexts::RxSlowLabel << ' ' << dialog.RxSlow << '\n'
        << ChannelTexts::TimeLabel << ' ' << dialog.TimeLine() << '\n'
        << ChannelTexts::BitRateLabel << ' ' << dialog.BitRate << '\n'
        << (dialog.ShowsAllowed ? ChannelTexts::Allowed : ChannelTexts::Refused) << '\n';
}

void PrintJson(const Workspace& workspace, const ChannelDialogState& dialog, int bitRate,
               bool allowed, std::ostream& out) {
    const ChannelCounters& counters = workspace.Channels;
    JsonWriter json(out, false);
    json.BeginObject()
        .Field("tx_fast", counters.txFast)
        .Field("tx_slow", counters.txSlow)
        .Field("rx_fast", counters.rxFast)
        .Field("rx_slow", counters.rxSlow)
        .Field("frames", counters.frames)
        .Field("bytes", counters.bytes)
        .Field("fast_bytes", counters.fastBytes)
        .Field("bit_rate", static_cast<long long>(bitRate))
        .Field("time_ms", dialog.TimeMs)
        .Field("max_fast_pdo", workspace.Net.MaxFastPdo())
        .Field("allowed", allowed)
        .EndObject();
    json.Finish();
}

} // namespace

int RunCheck(const QStringList& args, Context& context) {
    QCommandLineParser parser;
    const QCommandLineOption baudOption("baud", "velocità", "R");
    const QCommandLineOption jsonOption("json", "JSON");
    parser.addOption(baudOption);
    parser.addOption(jsonOption);
    if (const auto stop = ParseCommandArguments(parser, args, "check", kUsage, context, 1)) {
        return *stop;
    }
    int bitRate = kDefaultBitRate;
    if (parser.isSet(baudOption)) {
        bool number = false;
        bitRate = parser.value(baudOption).toInt(&number);
        if (!number || std::find(std::begin(kChannelBitRates), std::end(kChannelBitRates),
                                 bitRate) == std::end(kChannelBitRates)) {
            return context.Fail("velocità non valida: " + parser.value(baudOption).toStdString() +
                                " (125, 250, 500 o 1000)");
        }
    }

    Workspace workspace;
    LoadConfigurationFile(workspace, context.appDirectory,
                          parser.positionalArguments().first().toStdString());
    ChannelDialogState dialog;
    const bool allowed = TestPdo(workspace, dialog);
    if (parser.isSet(baudOption)) {
        RecomputeTime(bitRate, workspace.Channels, dialog);
    }
    if (parser.isSet(jsonOption)) {
        PrintJson(workspace, dialog, bitRate, allowed, context.out);
    } else {
        PrintText(dialog, context.out);
    }
    return allowed ? kExitOk : kExitRefused;
}

} // namespace velmora::cli
