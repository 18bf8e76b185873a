// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later

#include "BenchWindow.h"

#include "BenchRun.h"
#include "BenchTable.h"
#include "PortSearch.h"
#include "ProgressDelegate.h"

#include "link/PortReport.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QDir>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMessageBox>
#include <QProcess>
#include <QPushButton>
#include <QTableView>
#include <QTimer>
#include <QVBoxLayout>

#include <set>

namespace halvane {

using tessaly::link::ProbeResult;
using tessaly::link::SerialPortEntry;

struct BenchWindow::Private {
    Private(const Options& options, const QString& backups, BenchWindow* window)
        : options(options)
        , table(backups)
        , search(options.probeTime)
        , view(new QTableView(window))
        , summary(new QLabel(window))
        , backUp(new QPushButton(QStringLiteral("&Back up"), window))
        , open(new QPushButton(QStringLiteral("&Open"), window))
        , lookAgain(new QPushButton(QStringLiteral("&Look again"), window))
    {
    }

    // Whether the row's handset may be backed up or opened now.
    bool free(int row) const
    {
        const BenchRow& bench = table.at(row);
        return bench.state != BenchState::Reading && bench.state != BenchState::Gone && !search.searching(bench.node);
    }
    // The chosen rows, in order.
    std::vector<int> chosen() const
    {
        std::set<int> rows;
        for (const QModelIndex& index : view->selectionModel()->selectedRows())
            rows.insert(index.row());
        return {rows.begin(), rows.end()};
    }
    // Whether a port should be asked for a handset: no other program holds
    // it, no row shows a handset there and no search is asking it already.
    bool worthAsking(const SerialPortEntry& port) const
    {
        const int row = table.rowOf(port.device);
        return tessaly::link::WhyNotProbed(port).isEmpty() && !search.searching(port.node)
            && (row < 0 || table.at(row).state == BenchState::Gone);
    }

    Options options;
    BenchTable table;
    PortSearch search;
    std::unique_ptr<DeviceWatch> watch;
    std::vector<PortToProbe> fixed; // the ports named, when the bench is not watched
    bool named = false;             // the ports were named: a port without a handset gets a row too
    int runs = 0;                   // backups under way
    QTableView* view;
    QLabel* summary;
    QPushButton* backUp;
    QPushButton* open;
    QPushButton* lookAgain;
};

namespace {

// "3 handsets: 1 reading, 2 done", for a glance and a screen reader.
QString Summary(const BenchTable& table)
{
    if (table.rowCount() == 0)
        return QStringLiteral("No handset found yet. Plug one in and switch it to its diagnostic mode.");
    static const std::pair<BenchState, const char*> states[]
        = {{BenchState::Idle, "idle"},     {BenchState::Reading, "reading"}, {BenchState::Done, "done"},
           {BenchState::Failed, "failed"}, {BenchState::Gone, "gone"}};
    QStringList counts;
    for (const auto& [state, name] : states) {
        int count = 0;
        for (int row = 0; row < table.rowCount(); ++row)
            count += table.at(row).state == state ? 1 : 0;
        if (count > 0)
            counts << QStringLiteral("%1 %2").arg(count).arg(QLatin1String(name));
    }
    return QStringLiteral("%1 on the bench: %2. Backups are kept in %3")
        .arg(table.rowCount())
        .arg(counts.join(QStringLiteral(", ")), QDir::toNativeSeparators(table.backupFolder()));
}

} // namespace

BenchWindow::BenchWindow(const Options& options, const QString& backups, QWidget* parent)
    : QWidget(parent)
    , d(std::make_unique<Private>(options, backups, this))
{
    setObjectName(QStringLiteral("benchWindow"));
    setWindowTitle(QStringLiteral("Halvane bench"));
    QTableView* view = d->view;
    view->setObjectName(QStringLiteral("benchTable"));
    view->setModel(&d->table);
    view->setItemDelegateForColumn(BenchTable::Progress, new ProgressDelegate(view));
    view->setSelectionBehavior(QAbstractItemView::SelectRows);
    view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    view->setTabKeyNavigation(false); // Tab goes on to the buttons; the arrows move between rows
    view->setWordWrap(false);
    view->setTextElideMode(Qt::ElideRight); // a failure's reason is read from its start
    view->setAlternatingRowColors(true);
    view->verticalHeader()->hide();
    QHeaderView* header = view->horizontalHeader();
    header->setHighlightSections(false);
    header->setStretchLastSection(true);
    header->setMinimumSectionSize(60);
    const QFontMetrics metrics = view->fontMetrics();
    const auto wide = [&](const char* sample) { return metrics.horizontalAdvance(QLatin1String(sample)) + 24; };
    header->resizeSection(BenchTable::Port, wide("/dev/ttyUSB10"));
    header->resizeSection(BenchTable::Model, wide("Halvane SIM-800"));
    header->resizeSection(BenchTable::Esn, wide("8F00A1B2 / A1000012345678"));
    header->resizeSection(BenchTable::Software, wide("SIM800-1.04.021"));
    header->resizeSection(BenchTable::State, wide("failed: cannot be opened: no such"));
    header->resizeSection(BenchTable::Progress, wide("100 %, items 65535 of 65535"));
    view->setAccessibleName(QStringLiteral("Handsets on the bench"));
    view->setAccessibleDescription(QStringLiteral("One row per handset found: port, model, ESN and MEID, software "
                                                  "version, state, progress and last backup. Enter opens the "
                                                  "handset's panel."));

    d->summary->setObjectName(QStringLiteral("benchSummary"));
    d->summary->setAccessibleName(QStringLiteral("Bench summary"));
    d->summary->setTextInteractionFlags(Qt::TextSelectableByKeyboard | Qt::TextSelectableByMouse);
    d->summary->setFocusPolicy(Qt::NoFocus);
    d->backUp->setObjectName(QStringLiteral("benchBackUp"));
    d->backUp->setAccessibleDescription(QStringLiteral("Takes a full backup of every chosen handset at once"));
    d->open->setObjectName(QStringLiteral("benchOpen"));
    d->open->setAccessibleDescription(QStringLiteral("Opens the settings panel of the current handset in a window of "
                                                     "its own"));
    d->lookAgain->setObjectName(QStringLiteral("benchLookAgain"));
    d->lookAgain->setAccessibleDescription(QStringLiteral("Asks every free port again for a handset"));

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(d->backUp);
    buttons->addWidget(d->open);
    buttons->addStretch(1);
    buttons->addWidget(d->lookAgain);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(d->summary);
    layout->addWidget(view, 1);
    layout->addLayout(buttons);
    setTabOrder(view, d->backUp);
    setTabOrder(d->backUp, d->open);
    setTabOrder(d->open, d->lookAgain);
    setMinimumWidth(720);

    const auto update = [this] {
        const std::vector<int> rows = d->chosen();
        d->backUp->setEnabled(std::any_of(rows.begin(), rows.end(), [this](int row) { return d->free(row); }));
        const QModelIndex current = d->view->currentIndex();
        d->open->setEnabled(rows.size() == 1 && current.isValid() && d->free(current.row()));
        d->summary->setText(Summary(d->table));
    };
    connect(&d->table, &QAbstractItemModel::dataChanged, this, update);
    connect(&d->table, &QAbstractItemModel::rowsInserted, this, update);
    connect(view->selectionModel(), &QItemSelectionModel::selectionChanged, this, update);
    connect(view->selectionModel(), &QItemSelectionModel::currentChanged, this, update);
    connect(view, &QAbstractItemView::activated, this, &BenchWindow::openCurrent);
    connect(d->backUp, &QPushButton::clicked, this, &BenchWindow::backUpChosen);
    connect(d->open, &QPushButton::clicked, this, &BenchWindow::openCurrent);
    connect(d->lookAgain, &QPushButton::clicked, this, &BenchWindow::lookAgain);
    connect(&d->search, &PortSearch::probed, this,
            [this, update](const std::vector<PortToProbe>& ports, const std::vector<ProbeResult>& results) {
                for (size_t i = 0; i < ports.size() && i < results.size(); ++i) {
                    const ProbeResult& result = results[i];
                    if (result.handset) {
                        tessaly::link::HandsetIdentity identity = *result.handset;
                        identity.esn = result.esn.value_or(0);
                        d->table.found(ports[i].device, ports[i].node, identity, result.esn.has_value());
                    } else if (d->named) {
                        d->table.found(ports[i].device, ports[i].node, {}, false);
                        d->table.finished(d->table.rowOf(ports[i].device), {ports[i].device, {}, false,
                                                                             result.failure, {}, {}});
                    }
                }
                if (!d->view->currentIndex().isValid() && d->table.rowCount() > 0)
                    d->view->setCurrentIndex(d->table.index(0, 0));
                update();
                if (d->search.idle())
                    emit searched();
            });
    update();
}

// The runs go first: their threads still tell the table until they end.
BenchWindow::~BenchWindow()
{
    qDeleteAll(findChildren<BenchRun*>(Qt::FindDirectChildrenOnly));
}

void BenchWindow::watch(const DeviceWatch::Lister& lister)
{
    d->watch = std::make_unique<DeviceWatch>(lister);
    connect(d->watch.get(), &DeviceWatch::changed, this,
            [this](const std::vector<SerialPortEntry>& appeared, const QStringList& gone) {
                for (const QString& device : gone)
                    d->table.gone(device);
                std::vector<PortToProbe> ask;
                for (const SerialPortEntry& port : appeared)
                    if (d->worthAsking(port))
                        ask.push_back({port.device, port.node});
                d->search.search(ask);
            });
    lookAgain();
}

void BenchWindow::probe(const QStringList& ports)
{
    d->named = true;
    const std::vector<SerialPortEntry> listed
        = tessaly::link::ListPorts(tessaly::link::SystemRoot(), tessaly::link::KnownDiagInterfaces());
    for (const QString& named : ports) {
        const auto port = std::find_if(listed.begin(), listed.end(), [&](const SerialPortEntry& entry) {
            return entry.device == named || entry.node == named;
        });
        d->fixed.push_back(port == listed.end() ? PortToProbe{named, named} : PortToProbe{port->device, port->node});
    }
    lookAgain();
}

void BenchWindow::lookAgain()
{
    std::vector<PortToProbe> ask;
    if (d->watch) {
        for (const SerialPortEntry& port : d->watch->ports())
            if (d->worthAsking(port))
                ask.push_back({port.device, port.node});
    } else {
        for (const PortToProbe& port : d->fixed) {
            const int row = d->table.rowOf(port.device);
            if (!d->search.searching(port.node) && (row < 0 || d->free(row)))
                ask.push_back(port);
        }
    }
    d->search.search(ask);
    if (d->search.idle()) // nothing to ask: the search is over already
        QTimer::singleShot(0, this, &BenchWindow::searched);
}

void BenchWindow::backUpChosen()
{
    QStringList nodes;
    for (int row : d->chosen())
        if (d->free(row)) {
            nodes << d->table.at(row).node;
            d->table.started(row);
        }
    if (nodes.isEmpty())
        return;
    Options options = d->options;
    options.read = true;
    options.allItems = true;
    auto* run = new BenchRun(options, this);
    ++d->runs;
    const auto rowOf = [this](const QString& device) { return d->table.rowOf(device); };
    connect(run, &BenchRun::identified, this,
            [this, rowOf](const QString& device, const tessaly::link::HandsetIdentity& identity) {
                if (const int row = rowOf(device); row >= 0)
                    d->table.identified(row, identity);
            });
    connect(run, &BenchRun::progressed, this, [this, rowOf](const QString& device, const BenchProgress& progress) {
        if (const int row = rowOf(device); row >= 0)
            d->table.progressed(row, progress);
    });
    connect(run, &BenchRun::finished, this, [this, rowOf](const BenchOutcome& outcome) {
        if (const int row = rowOf(outcome.device); row >= 0)
            d->table.finished(row, outcome);
    });
    connect(run, &BenchRun::allFinished, this, [this, run] {
        --d->runs;
        run->deleteLater();
    });
    run->start(nodes);
}

void BenchWindow::openCurrent()
{
    const QModelIndex current = d->view->currentIndex();
    if (current.isValid() && d->free(current.row()))
        emit openRequested(d->table.at(current.row()).device);
}

void BenchWindow::closeEvent(QCloseEvent* event)
{
    // A backup under way is never cut short: halvane ends once it has.
    if (d->runs > 0
        && QMessageBox::question(this, windowTitle(),
                                 QStringLiteral("Backups are under way. Close the bench window? halvane ends once "
                                                "they have finished."),
                                 QMessageBox::Close | QMessageBox::Cancel, QMessageBox::Cancel)
               != QMessageBox::Close) {
        event->ignore();
        return;
    }
    event->accept();
}

QSize BenchWindow::sizeHint() const
{
    // Every column at its width, the last with room for a backup's time and
    // path, and a tray's worth of rows.
    const QHeaderView* header = d->view->horizontalHeader();
    const int columns = header->sectionPosition(BenchTable::LastBackup)
        + d->view->fontMetrics().horizontalAdvance(QStringLiteral("2026-11-26 08:30  8F3A21C4-20261126-083000-full.json"))
        + 24;
    const int rows = header->height() + 8 * d->view->verticalHeader()->defaultSectionSize();
    // Above and below the table, the summary and the buttons; beside it, the
    // layout's margins alone.
    const QMargins margins = layout()->contentsMargins();
    const int above = QWidget::sizeHint().height() - d->view->sizeHint().height();
    return {columns + 2 * d->view->frameWidth() + margins.left() + margins.right(),
            rows + 2 * d->view->frameWidth() + above};
}

BenchTable& BenchWindow::table() const
{
    return d->table;
}

QTableView& BenchWindow::view() const
{
    return *d->view;
}

QPushButton& BenchWindow::backUpButton() const
{
    return *d->backUp;
}

QPushButton& BenchWindow::openButton() const
{
    return *d->open;
}

QPushButton& BenchWindow::lookAgainButton() const
{
    return *d->lookAgain;
}

bool BenchWindow::working() const
{
    return d->runs > 0;
}

bool OpenPanelProcess(const QString& device, const Options& options)
{
    QStringList arguments{QStringLiteral("--port"), device, QStringLiteral("--reply-time"),
                          QString::number(options.replyTime.count())};
    if (!options.spc.isEmpty())
        arguments << QStringLiteral("--spc") << options.spc;
    return QProcess::startDetached(QCoreApplication::applicationFilePath(), arguments);
}

} // namespace halvane
