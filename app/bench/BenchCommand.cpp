// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later

#include "BenchCommand.h"

#include "BenchRun.h"

#include "link/IdentityText.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTimer>

#include <cstdio>
#include <sys/ioctl.h>
#include <unistd.h>

namespace halvane {

using namespace tessaly;

namespace {

QString EsnText(const std::optional<link::HandsetIdentity>& identity)
{
    return identity ? link::EsnHex(identity->esn) : QStringLiteral("-");
}

// The line of one handset while it works.
QString ProgressText(const BenchProgress& progress)
{
    switch (progress.stage) {
    case BenchProgress::Stage::Identifying:
        return QStringLiteral("asking who it is");
    case BenchProgress::Stage::Restoring:
        return QStringLiteral("restoring");
    case BenchProgress::Stage::Files:
        return QStringLiteral("%1 of %2 items, %3 files read, %4 MB")
            .arg(progress.done)
            .arg(progress.total)
            .arg(progress.files)
            .arg(double(progress.bytes) / 1e6, 0, 'f', 1);
    case BenchProgress::Stage::Items:
        if (progress.total == 0)
            return QStringLiteral("reading");
        return QStringLiteral("%1 of %2 items, %3 items/s, %4 s left")
            .arg(progress.done)
            .arg(progress.total)
            .arg(progress.rate, 0, 'f', 0)
            .arg(progress.secondsLeft, 0, 'f', 0);
    }
    return {};
}

// The handsets' lines on a terminal, one each, redrawn in place at most ten
// times a second.
class ProgressBlock {
public:
    explicit ProgressBlock(const QStringList& devices)
        : m_devices(devices)
    {
        for (const QString& device : devices)
            m_lines[device] = ProgressText({});
        m_width = 0;
        for (const QString& device : devices)
            m_width = std::max(m_width, device.size());
    }
    void identified(const QString& device, const link::HandsetIdentity& identity)
    {
        m_esns[device] = EsnText(identity);
    }
    void set(const QString& device, const QString& line) { m_lines[device] = line; }
    void draw()
    {
        if (m_drawn)
            std::fprintf(stderr, "\033[%dA", int(m_devices.size()));
        // A line wider than the terminal would wrap, and the block would no
        // longer be where it is redrawn.
        winsize size {};
        const int columns = ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80;
        for (const QString& device : m_devices) {
            const QString line = QStringLiteral("%1  %2  %3")
                                     .arg(device.leftJustified(m_width),
                                         m_esns.value(device, QStringLiteral("-")).leftJustified(8), m_lines[device]);
            std::fprintf(stderr, "\r%s\033[K\n", qPrintable(line.left(columns - 1)));
        }
        std::fflush(stderr);
        m_drawn = true;
    }
    // Takes the block away: the summary says the same at the end.
    void erase()
    {
        if (!m_drawn)
            return;
        std::fprintf(stderr, "\033[%dA\r\033[J", int(m_devices.size()));
        std::fflush(stderr);
    }

private:
    QStringList m_devices;
    QHash<QString, QString> m_lines;
    QHash<QString, QString> m_esns;
    qsizetype m_width = 0;
    bool m_drawn = false;
};

QJsonObject OutcomeJson(const BenchOutcome& outcome)
{
    const auto& identity = outcome.identity;
    return {
        {QStringLiteral("port"), outcome.device},
        {QStringLiteral("esn"), identity ? QJsonValue(EsnText(identity)) : QJsonValue()},
        {QStringLiteral("meid"), identity && !identity->meid.isEmpty() ? QJsonValue(identity->meid) : QJsonValue()},
        {QStringLiteral("model"), identity ? QJsonValue(identity->model) : QJsonValue()},
        {QStringLiteral("softwareVersion"), identity ? QJsonValue(identity->softwareVersion) : QJsonValue()},
        {QStringLiteral("succeeded"), outcome.succeeded},
        {QStringLiteral("outcome"), outcome.outcome},
        {QStringLiteral("backup"), outcome.backupPath.isEmpty() ? QJsonValue() : QJsonValue(outcome.backupPath)},
        {QStringLiteral("told"), QJsonArray::fromStringList(outcome.told)},
    };
}

// One line per handset, its columns aligned: port, ESN, model, outcome,
// backup.
void PrintSummary(const std::vector<BenchOutcome>& outcomes)
{
    qsizetype port = 0;
    qsizetype model = 0;
    for (const BenchOutcome& outcome : outcomes) {
        port = std::max(port, outcome.device.size());
        model = std::max(model, outcome.identity ? outcome.identity->model.size() : qsizetype(1));
    }
    for (const BenchOutcome& outcome : outcomes) {
        QString line = QStringLiteral("%1  %2  %3  %4")
                           .arg(outcome.device.leftJustified(port), EsnText(outcome.identity).leftJustified(8),
                               (outcome.identity ? outcome.identity->model : QStringLiteral("-")).leftJustified(model),
                               outcome.outcome);
        if (!outcome.backupPath.isEmpty())
            line += QStringLiteral("  ") + outcome.backupPath;
        std::printf("%s\n", qPrintable(line));
    }
}

} // namespace

int RunBenchCommand(const Options& options, const QStringList& devices)
{
    BenchRun run(options);
    const bool terminal = isatty(STDERR_FILENO);
    ProgressBlock block(devices);
    QTimer redraw;
    if (terminal) {
        QObject::connect(&run, &BenchRun::identified, &run,
            [&](const QString& device, const link::HandsetIdentity& who) { block.identified(device, who); });
        QObject::connect(&run, &BenchRun::progressed, &run,
            [&](const QString& device, const BenchProgress& progress) { block.set(device, ProgressText(progress)); });
        QObject::connect(&run, &BenchRun::finished, &run, [&](const BenchOutcome& outcome) {
            if (outcome.identity)
                block.identified(outcome.device, *outcome.identity);
            block.set(
                outcome.device, outcome.succeeded ? outcome.outcome : QStringLiteral("failed: ") + outcome.outcome);
        });
        QObject::connect(&redraw, &QTimer::timeout, &run, [&block] { block.draw(); });
        redraw.start(100);
        block.draw();
    }
    QObject::connect(&run, &BenchRun::allFinished, QCoreApplication::instance(), &QCoreApplication::quit);
    run.start(devices);
    QCoreApplication::exec();
    if (terminal)
        block.erase();

    for (const QString& unreadable : run.unreadable())
        std::fprintf(stderr, "halvane: passed over %s\n", qPrintable(unreadable));
    const std::vector<BenchOutcome>& outcomes = run.outcomes();
    if (!options.restoreBackup.isEmpty()
        && std::none_of(outcomes.begin(), outcomes.end(), [](const BenchOutcome& o) { return !o.backupPath.isEmpty(); })
        && std::any_of(outcomes.begin(), outcomes.end(), [](const BenchOutcome& o) { return o.identity.has_value(); }))
        std::fprintf(
            stderr, "halvane: no backup in %s belongs to a handset on the bench.\n", qPrintable(options.restoreBackup));
    if (options.json) {
        QJsonArray array;
        for (const BenchOutcome& outcome : outcomes)
            array.append(OutcomeJson(outcome));
        std::printf("%s", QJsonDocument(array).toJson(QJsonDocument::Indented).constData());
    } else {
        for (const BenchOutcome& outcome : outcomes)
            for (const QString& said : outcome.told)
                std::printf("%s: %s\n", qPrintable(outcome.device), qPrintable(said));
        PrintSummary(outcomes);
    }
    const bool all = std::all_of(outcomes.begin(), outcomes.end(), [](const BenchOutcome& o) { return o.succeeded; });
    return all ? 0 : 1;
}

} // namespace halvane
