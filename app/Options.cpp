// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later

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

// "FIRST-LAST", item numbers of 0 to 65535 in order.
bool ItemRange(const QString& value, Options& options)
{
    const QStringList ends = value.split(QLatin1Char('-'));
    bool first = false;
    bool last = false;
    const uint from = ends.value(0).toUInt(&first);
    const uint to = ends.value(1).toUInt(&last);
    if (ends.size() != 2 || !first || !last || from > to || to > 65535) {
        std::fprintf(stderr, "halvane: --items wants FIRST-LAST, item numbers of 0 to 65535, not \"%s\"\n",
                     qPrintable(value));
        return false;
    }
    options.firstItem = uint16_t(from);
    options.lastItem = uint16_t(to);
    return true;
}

// What is wrong with the bench --port names, if anything: each device named
// once, and a command that works on many handsets: the bench window, or one
// that works without a window.
QString BenchPortsProblem(const Options& options)
{
    QStringList devices;
    for (const QString& named : options.port.split(QLatin1Char(','))) {
        const QString device = named.trimmed();
        if (device.isEmpty() || (device == QLatin1String("all") && options.port != device))
            return QStringLiteral("--port wants devices separated by commas, or \"all\", not \"%1\"").arg(options.port);
        if (devices.contains(device))
            return QStringLiteral("--port names %1 twice: each handset is worked on once").arg(device);
        devices << device;
    }
    if (!options.bench && !options.read && !options.info && options.restoreBackup.isEmpty())
        return QStringLiteral("--port with several handsets works with --bench, --info, --read and "
                              "--restore-backup; the panel's window and the file system commands work with one: "
                              "name its port");
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
    const auto port = option("port", "Work with the handset on the serial <device> instead of the simulated one; "
                                     "\"auto\" takes the one port where a handset answers. With --info, --read or "
                                     "--restore-backup, devices separated by commas, or \"all\" for every port "
                                     "where a handset answers, work on many handsets at once.",
                             "device");
    const auto replyTime = option("reply-time", "Wait <ms> milliseconds for each reply of the handset.", "ms",
                                  QStringLiteral("3000"));
    const auto spc = option("spc", "Unlock the handset with its service programming <code> when it asks.", "code");
    const auto listPorts = option("list-ports", "List the serial ports and exit.");
    const auto bench = option("bench", "Show every handset on the machine's ports (with --port, on the "
                                       "comma-separated devices given) in the bench window, to back them up at once.");
    const auto probe = option("probe", "With --list-ports, ask each free port for a handset.");
    const auto json = option("json", "With --list-ports, --efs-list or several handsets, print JSON.");
    const auto probeTime = option("probe-time", "Wait <ms> milliseconds for handsets to answer a probe.", "ms",
                                  QStringLiteral("300"));
    const auto read = option("read", "Read the handset on --port without a window, keep its backup, print the "
                                     "backup's path and exit.");
    const auto restore = option("restore-backup", "Write the backup <file> back to the handset on --port, tell each "
                                                  "item's outcome and exit; with several handsets, <file> may be a "
                                                  "folder, each handset getting its own newest backup.",
                                "file");
    const auto info = option("info", "Print the model, software version, dates, ESN and MEID of the handset on "
                                     "--port and exit.");
    const auto allItems = option("all-items", "With --read, keep every NV item the handset holds, not only the "
                                              "catalogue's; with --restore-backup, write the items the catalogue does "
                                              "not know too.");
    const auto items = option("items", "With --read, keep the NV items <first-last> (implies --all-items).",
                              "first-last");
    const auto inFlight = option("in-flight", "Keep <n> requests on the line at once in a full backup, 1 to 8.", "n",
                                 QStringLiteral("4"));
    const auto convert = option("convert", "Convert the NV file <in> (.json or .xqcn) into the file OUT given after "
                                           "it, of the other kind, and exit.",
                                "in");
    const auto noFiles = option("no-files", "With --read --all-items, leave the handset's file system out of the "
                                            "backup.");
    const auto efsList = option("efs-list", "List the folder <path> of the file system of the handset on --port as "
                                            "ls -l does (with --json, as a JSON array) and exit.",
                                "path");
    const auto efsGet = option("efs-get", "Copy the file <path> of the handset on --port to the local file given "
                                          "after it, and exit.",
                               "path");
    const auto efsPut = option("efs-put", "Write the local <file> to the path of the handset on --port given after "
                                          "it, keeping what was there first, and exit.",
                               "file");
    const auto nvRead = option("nv-read", "Print the NV item <item[:index]> of the handset on --port: its status, its "
                                          "128 bytes as xxd shows them and the catalogue's values, and exit.",
                               "item[:index]");
    const auto nvWrite = option("nv-write", "Write the NV item <item[:index]> of the handset on --port with the bytes in "
                                            "hexadecimal given after it (spaces allowed; zeros after fewer than 128), "
                                            "keeping what it held first, and exit.",
                                "item[:index]");
    const auto diff = option("diff", "Compare the NV file <a> (a backup or an XQCN file) with the file B given after "
                                     "it, print what differs (with --json, as JSON) and exit 0 when they hold the "
                                     "same, 1 when they differ.",
                             "a");
    const auto prlShow = option("prl-show", "Show the roaming list <file> (.prl) as its tables (with --json, as JSON) "
                                            "and exit.",
                                "file");
    const auto prlGet = option("prl-get", "Read the roaming list of the handset on --port into the new <file> and exit.",
                               "file");
    const auto prlPut = option("prl-put", "Check the roaming list <file>, write it to the handset on --port, keeping "
                                          "its list first, read it back and exit.",
                               "file");
    parser.addPositionalArgument(QStringLiteral("OUT"),
                                 QStringLiteral("With --convert, the file to write; with --efs-get, the local file; "
                                                "with --efs-put, the path on the handset; with --nv-write, the bytes; "
                                                "with --diff, the file B."),
                                 QStringLiteral("[OUT]"));
    // A wrong option is bad usage, exit status 2; process() would exit with 1.
    if (!parser.parse(QCoreApplication::arguments())) {
        std::fprintf(stderr, "halvane: %s\n", qPrintable(parser.errorText()));
        return {};
    }
    parser.process(app); // --help, --help-all and --version

    // A refusal: told on standard error, no options.
    const auto refuse = [](const QString& why) -> std::optional<Options> {
        std::fprintf(stderr, "halvane: %s\n", qPrintable(why));
        return {};
    };
    Options options;
    options.screenshot = parser.value(screenshot);
    options.page = parser.value(page);
    options.message = parser.value(message);
    options.hasMessage = parser.isSet(message);
    options.edit = parser.value(edit);
    options.state = parser.value(state);
    options.port = parser.value(port);
    options.spc = parser.value(spc);
    options.restoreBackup = parser.value(restore);
    options.listPorts = parser.isSet(listPorts);
    options.bench = parser.isSet(bench);
    options.read = parser.isSet(read);
    const auto paceMs = Milliseconds(QStringLiteral("pace"), parser.value(pace), 0);
    const auto replyMs = Milliseconds(QStringLiteral("reply-time"), parser.value(replyTime), 1);
    const auto probeMs = Milliseconds(QStringLiteral("probe-time"), parser.value(probeTime), 1);
    if (!paceMs || !replyMs || !probeMs)
        return {};
    options.info = parser.isSet(info);
    options.probe = parser.isSet(probe);
    options.json = parser.isSet(json);
    options.probeTime = *probeMs;
    if (options.probe && !options.listPorts)
        return refuse(QStringLiteral("--probe goes with --list-ports"));
    options.prlShow = parser.value(prlShow);
    options.prlGet = parser.value(prlGet);
    options.prlPut = parser.value(prlPut);
    const bool printsData
        = options.listPorts || parser.isSet(efsList) || parser.isSet(diff) || parser.isSet(prlShow) || options.manyPorts();
    if (options.json && !printsData)
        return refuse(QStringLiteral("--json goes with --list-ports, --efs-list, --diff, --prl-show or a --port of "
                                     "several handsets"));
    options.pace = *paceMs;
    options.replyTime = *replyMs;
    options.allItems = parser.isSet(allItems) || parser.isSet(items);
    if (parser.isSet(items) && !options.read)
        return refuse(QStringLiteral("--items narrows the full backup of --read"));
    if (parser.isSet(items) && !ItemRange(parser.value(items), options))
        return {};
    bool number = false;
    options.inFlight = parser.value(inFlight).toInt(&number);
    if (!number || options.inFlight < 1 || options.inFlight > 8)
        return refuse(QStringLiteral("--in-flight wants a number of 1 to 8, not \"%1\"").arg(parser.value(inFlight)));
    const bool secondFile = parser.isSet(convert) || parser.isSet(efsGet) || parser.isSet(efsPut)
        || parser.isSet(nvWrite) || parser.isSet(diff);
    if (!secondFile && !parser.positionalArguments().isEmpty())
        return refuse(QStringLiteral("\"%1\" is not an option; a file comes alone only after --convert IN, --efs-get "
                                     "PATH, --efs-put FILE or --diff A, bytes after --nv-write ITEM")
                          .arg(parser.positionalArguments()[0]));
    options.noFiles = parser.isSet(noFiles);
    if (options.noFiles && !(options.read && options.allItems))
        return refuse(QStringLiteral("--no-files narrows the full backup of --read --all-items"));
    const std::pair<QCommandLineOption, Options::FileWork> works[]
        = {{efsList, Options::FileWork::List}, {efsGet, Options::FileWork::Get}, {efsPut, Options::FileWork::Put}};
    for (const auto& [work, kind] : works) {
        if (!parser.isSet(work))
            continue;
        if (options.fileWork != Options::FileWork::None)
            return refuse(QStringLiteral("--efs-list, --efs-get and --efs-put go one at a time"));
        options.fileWork = kind;
        options.efsFrom = parser.value(work);
        if (kind != Options::FileWork::List) {
            if (parser.positionalArguments().size() != 1)
                return refuse(QStringLiteral("--%1 wants the file to write after the one to read").arg(work.names()[0]));
            options.efsTo = parser.positionalArguments()[0];
        }
        const QString& onHandset = kind == Options::FileWork::Put ? options.efsTo : options.efsFrom;
        if (!onHandset.startsWith(QLatin1Char('/')) || onHandset.contains(QLatin1String("//")))
            return refuse(QStringLiteral("\"%1\" is not a path on the handset: it starts at its root, as "
                                         "/nv/item_files does")
                              .arg(onHandset));
    }
    if (parser.isSet(convert)) {
        if (parser.positionalArguments().size() != 1)
            return refuse(QStringLiteral("--convert IN OUT wants the file to write after the one to read"));
        options.convertFrom = parser.value(convert);
        options.convertTo = parser.positionalArguments()[0];
    }
    options.nvRead = parser.value(nvRead);
    options.nvWrite = parser.value(nvWrite);
    options.nvBytes = parser.positionalArguments().join(QLatin1Char(' '));
    if (parser.isSet(nvRead) && parser.isSet(nvWrite))
        return refuse(QStringLiteral("--nv-read and --nv-write go one at a time"));
    if (parser.isSet(diff)) {
        if (parser.positionalArguments().size() != 1)
            return refuse(QStringLiteral("--diff A B wants the file to compare A with after it"));
        options.diffFrom = parser.value(diff);
        options.diffTo = parser.positionalArguments()[0];
    }
    if (options.bench
        && (options.read || options.info || !options.restoreBackup.isEmpty() || options.listPorts
            || options.fileWork != Options::FileWork::None || !options.convertFrom.isEmpty() || !options.nvRead.isEmpty()
            || !options.nvWrite.isEmpty() || !options.diffFrom.isEmpty() || !options.prlShow.isEmpty()
            || !options.prlGet.isEmpty() || !options.prlPut.isEmpty()))
        return refuse(QStringLiteral("--bench is a window of its own: it goes with --port, --screenshot, "
                                     "--probe-time, --reply-time, --spc and --in-flight"));
    if ((options.read || options.info || parser.isSet(nvRead) || parser.isSet(nvWrite) || !options.restoreBackup.isEmpty()
         || options.fileWork != Options::FileWork::None || !options.prlGet.isEmpty() || !options.prlPut.isEmpty())
        && options.port.isEmpty())
        return refuse(QStringLiteral("--read, --info, --restore-backup, the --nv, --efs and --prl-get/--prl-put commands "
                                     "work on a real handset: give its --port"));
    if (options.manyPorts())
        if (const QString problem = BenchPortsProblem(options); !problem.isEmpty())
            return refuse(problem);
    return options;
}

} // namespace halvane
