#include "Options.h"

#include "model/FileNvMemory.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <cstdio>

namespace halvane {

namespace {

// A number of milliseconds, or nothing after telling what is wrong.
std::optional<std::chrono::milliseconds> Milliseconds(const QString& name, const QString& value, int least)
{
    bool ok = false;
    const int ms = value.toInt(&ok);
    if (ok && ms >= least)
        return std::chrono::milliseconds(ms);
    std::fprintf(stderr, "halvane: --%s wants a number of milliseconds, not \"%s\"\n", qPrintable(name),
                 qPrintable(value));
    return {};
}

} // namespace

std::optional<Options> ParseOptions(const QCoreApplication& app)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Phone service tool with the Tessaly settings panel."));
    parser.addHelpOption();
    parser.addVersionOption();
    const auto option = [&](const char* name, const char* help, const char* value = nullptr, QString fallback = {}) {
        const QCommandLineOption added = value ? QCommandLineOption(QLatin1String(name), QLatin1String(help),
                                                                    QLatin1String(value), fallback)
                                               : QCommandLineOption(QLatin1String(name), QLatin1String(help));
        parser.addOption(added);
        return added;
    };
    const auto screenshot = option("screenshot", "Render the panel to <file> and exit.", "file");
    const auto page = option("page", "Show the page of tree node <node>.", "node");
    const auto message = option("message", "Show the panel's message box with <text>.", "text");
    const auto edit = option("edit", "Double-click the value cell <row,column> of the page on view.", "row,column");
    const auto state = option("state", "Keep the simulated handset's NV memory in <file> (default: its data folder).",
                              "file", tessaly::model::FileNvMemory::DefaultPath());
    const auto pace = option("pace", "Hold each NV item <ms> milliseconds on the line, to watch the progress.", "ms",
                             QStringLiteral("0"));
    const auto port = option("port", "Work with the handset on the serial <device> instead of the simulated one.",
                             "device");
    const auto replyTime = option("reply-time", "Wait <ms> milliseconds for each reply of the handset.", "ms",
                                  QStringLiteral("3000"));
    const auto spc = option("spc", "Unlock the handset with its service programming <code> when it asks.", "code");
    const auto listPorts = option("list-ports", "List the serial ports and exit.");
    const auto read = option("read", "Read the handset on --port without a window, keep its backup, print the "
                                     "backup's path and exit.");
    const auto restore = option("restore-backup", "Write the backup <file> back to the handset on --port, tell each "
                                                  "item's outcome and exit.",
                                "file");
    // A wrong option is bad usage, exit status 2; process() would exit with 1.
    if (!parser.parse(QCoreApplication::arguments())) {
        std::fprintf(stderr, "halvane: %s\n", qPrintable(parser.errorText()));
        return {};
    }
    parser.process(app); // --help, --help-all and --version

    Options options{parser.value(screenshot), parser.value(page), parser.value(message), parser.value(edit),
                    parser.value(state), {}, parser.value(port), {}, parser.value(spc), parser.value(restore),
                    parser.isSet(listPorts), parser.isSet(read), parser.isSet(message)};
    const auto paceMs = Milliseconds(QStringLiteral("pace"), parser.value(pace), 0);
    const auto replyMs = Milliseconds(QStringLiteral("reply-time"), parser.value(replyTime), 1);
    if (!paceMs || !replyMs)
        return {};
    options.pace = *paceMs;
    options.replyTime = *replyMs;
    if ((options.read || !options.restoreBackup.isEmpty()) && options.port.isEmpty()) {
        std::fprintf(stderr, "halvane: --read and --restore-backup work on a real handset: give its --port\n");
        return {};
    }
    return options;
}

} // namespace halvane
