// halvane: the phone service tool's host window around the Tessaly panel,
// bound to a simulated handset whose NV memory is kept in a file between
// runs, or to a real handset on a serial port with --port. Without a
// display, or with --screenshot FILE, it runs an NV Read,
// renders the filled panel to a PNG file, prints the file's path and exits. With --message TEXT it shows
// the panel's own message box with that text over the panel, or renders the
// box alone, its cut corners transparent. With --edit ROW,COLUMN it opens the
// editor of that cell as a double click does.
#include "frame/frmMsgBox.h" // the panel's own box, which no host method opens
#include "link/Backup.h"
#include "link/LiveNvMemory.h"
#include "model/Catalogue.h"
#include "model/FileNvMemory.h"
#include "model/SimulatedHandset.h"

#include <tessaly/Tessaly.h>

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <QAbstractScrollArea>
#include <QInputDialog>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPainter>
#include <QTreeWidget>

#include <cstdio>

namespace {

bool HasDisplay()
{
    return !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")
        || !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
}

// Platforms that draw into memory only: nothing would ever be seen.
bool DrawsNowhere()
{
    const QString platform = QGuiApplication::platformName();
    return platform == QLatin1String("offscreen") || platform == QLatin1String("minimal");
}

// The left button's events at `at` in `target`, as a user's hand makes them;
// the button is held between a press or double click and its release.
void SendLeftButton(QWidget* target, QPointF at, std::initializer_list<QEvent::Type> types)
{
    for (QEvent::Type type : types) {
        QMouseEvent event(type, at, target->mapToGlobal(at), Qt::LeftButton,
                          type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(target, &event);
    }
}

// Clicks the page tree's node as a user would, so that its page shows.
bool ClickTreeNode(Tessaly& panel, const QString& text)
{
    auto* tree = panel.findChild<QTreeWidget*>(QStringLiteral("OrvenTreeView1"));
    const QList<QTreeWidgetItem*> found = tree ? tree->findItems(text, Qt::MatchExactly | Qt::MatchRecursive) : QList<QTreeWidgetItem*>();
    if (found.isEmpty())
        return false;
    SendLeftButton(tree->viewport(), tree->visualItemRect(found.first()).center(),
                   {QEvent::MouseButtonPress, QEvent::MouseButtonRelease});
    return true;
}

// Clicks a button of the command bar as a user would.
void ClickCommand(Tessaly& panel, int index)
{
    auto* button = panel.findChild<QWidget*>(QStringLiteral("picCommand(%1)").arg(index));
    SendLeftButton(button, QPointF(button->width() / 2.0, button->height() / 2.0),
                   {QEvent::MouseButtonPress, QEvent::MouseButtonRelease});
}

// Double-clicks a value cell of the page on view as a user would, which
// opens its editor. `cell` is "row,column".
bool OpenCellEditor(Tessaly& panel, const QString& cell)
{
    const QStringList parts = cell.split(QLatin1Char(','));
    bool rowOk = false, colOk = false;
    const int row = parts.value(0).toInt(&rowOk), col = parts.value(1).toInt(&colOk);
    QAbstractScrollArea* grid = nullptr;
    for (auto* candidate : panel.findChildren<QAbstractScrollArea*>())
        if (candidate->objectName().startsWith(QLatin1String("MSFlexGrid1(")) && candidate->isVisible())
            grid = candidate;
    if (!grid || parts.size() != 2 || !rowOk || !colOk || row < 1 || col < 1
        || row >= grid->property("Rows").toInt() || col >= grid->property("Cols").toInt())
        return false;
    grid->setProperty("Row", row);
    grid->setProperty("Col", col);
    const QPoint centre(grid->property("CellLeft").toInt() / 15 + grid->property("CellWidth").toInt() / 30,
                        grid->property("CellTop").toInt() / 15 + grid->property("CellHeight").toInt() / 30);
    SendLeftButton(grid->viewport(), grid->viewport()->mapFrom(grid, centre),
                   {QEvent::MouseButtonPress, QEvent::MouseButtonRelease, QEvent::MouseButtonDblClick,
                    QEvent::MouseButtonRelease});
    return true;
}

// The panel as the screen shows it, with any list dropped open over it.
QImage RenderWithPopups(Tessaly& panel)
{
    QImage image = panel.grab().toImage();
    QPainter painter(&image);
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->isVisible() && window->windowType() == Qt::Popup)
            painter.drawPixmap(panel.mapFromGlobal(window->pos()), window->grab());
    return image;
}

// A window as the screen shows it: what its mask cuts away is transparent.
QImage RenderShaped(QWidget& window)
{
    const qreal ratio = window.devicePixelRatioF();
    QImage image(window.size() * ratio, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::transparent);
    window.render(&image, QPoint(), window.mask().isEmpty() ? QRegion(window.rect()) : window.mask());
    return image;
}

} // namespace

int main(int argc, char** argv)
{
    if (!HasDisplay())
        qputenv("QT_QPA_PLATFORM", "offscreen");

    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Halvane"));
    QApplication::setApplicationVersion(QStringLiteral(TESSALY_VERSION));

    QCommandLineParser options;
    options.setApplicationDescription(QStringLiteral("Phone service tool with the Tessaly settings panel."));
    options.addHelpOption();
    options.addVersionOption();
    const QCommandLineOption screenshot(QStringLiteral("screenshot"),
                                        QStringLiteral("Render the panel to <file> and exit."), QStringLiteral("file"));
    const QCommandLineOption page(QStringLiteral("page"), QStringLiteral("Show the page of tree node <node>."),
                                  QStringLiteral("node"));
    const QCommandLineOption message(QStringLiteral("message"),
                                     QStringLiteral("Show the panel's message box with <text>."), QStringLiteral("text"));
    const QCommandLineOption edit(QStringLiteral("edit"),
                                  QStringLiteral("Double-click the value cell <row,column> of the page on view."),
                                  QStringLiteral("row,column"));
    const QCommandLineOption state(QStringLiteral("state"),
                                   QStringLiteral("Keep the handset's NV memory in <file> (default: %1).")
                                       .arg(tessaly::model::FileNvMemory::DefaultPath()),
                                   QStringLiteral("file"), tessaly::model::FileNvMemory::DefaultPath());
    const QCommandLineOption pace(QStringLiteral("pace"),
                                  QStringLiteral("Hold each NV item <ms> milliseconds on the line, to watch the progress."),
                                  QStringLiteral("ms"), QStringLiteral("0"));
    const QCommandLineOption port(QStringLiteral("port"),
                                  QStringLiteral("Work with the handset on the serial <device> instead of the simulated one."),
                                  QStringLiteral("device"));
    const QCommandLineOption listPorts(QStringLiteral("list-ports"), QStringLiteral("List the serial ports and exit."));
    const QCommandLineOption restoreBackup(QStringLiteral("restore-backup"),
                                           QStringLiteral("Write the backup <file> back to the handset on --port, "
                                                          "tell each item's outcome and exit."),
                                           QStringLiteral("file"));
    options.addOptions({screenshot, page, message, edit, state, pace, port, listPorts, restoreBackup});
    options.process(app);
    if (options.isSet(listPorts)) {
        for (const QString& candidate : tessaly::link::SerialLink::CandidatePorts())
            std::printf("%s\n", qPrintable(candidate));
        return 0;
    }
    bool paceOk = false;
    const int paceMs = options.value(pace).toInt(&paceOk);
    if (!paceOk || paceMs < 0) {
        std::fprintf(stderr, "halvane: --pace wants a number of milliseconds, not \"%s\"\n", qPrintable(options.value(pace)));
        return 2;
    }
    const bool headless = DrawsNowhere();

    QWidget window;
    window.setWindowTitle(QStringLiteral("Halvane"));
    Tessaly panel(&window);
    window.setFixedSize(panel.size());
    // The handset: on a serial port, or the simulated one with its memory file.
    std::unique_ptr<tessaly::link::SerialLink> line;
    std::unique_ptr<tessaly::model::NvMemory> memory;
    QString problem;
    if (options.isSet(port)) {
        try {
            line = std::make_unique<tessaly::link::SerialLink>(options.value(port));
        } catch (const TessalyError& error) {
            std::fprintf(stderr, "halvane: %s\n", qPrintable(error.description()));
            return 1;
        }
        auto live = std::make_unique<tessaly::link::LiveNvMemory>(*line, [&] {
            return headless ? QString()
                            : QInputDialog::getText(&window, QStringLiteral("Halvane"),
                                                    QStringLiteral("The handset is locked. Its SPC (six digits):"));
        });
        live->setBackupFolder(tessaly::link::BackupFolder()); // every read of a real handset is kept
        if (options.isSet(restoreBackup)) {
            try {
                const auto backup = tessaly::link::Backup::Load(options.value(restoreBackup));
                for (const QString& outcome : tessaly::link::RestoreBackup(backup, *live))
                    std::printf("%s\n", qPrintable(outcome));
                return 0;
            } catch (const TessalyError& error) {
                std::fprintf(stderr, "halvane: %s\n", qPrintable(error.description()));
                return 1;
            }
        }
        memory = std::move(live);
    } else {
        auto file = std::make_unique<tessaly::model::FileNvMemory>(options.value(state),
                                                                   tessaly::model::Catalogue::BuiltIn().factory());
        problem = file->lastProblem();
        memory = std::move(file);
    }
    tessaly::model::SimulatedHandset handset(panel, *memory);
    handset.setPace(std::chrono::milliseconds(paceMs));
    panel.SetModelDLL(&handset);
    window.show();
    if (!problem.isEmpty()) {
        if (headless || options.isSet(screenshot))
            std::fprintf(stderr, "halvane: %s\n", qPrintable(problem));
        else
            QMessageBox::warning(&window, QStringLiteral("Halvane"), problem);
    }
    // Without a display there is no one to press NV Read: halvane does.
    if (headless || options.isSet(screenshot))
        ClickCommand(panel, 0);

    if (options.isSet(page) && !ClickTreeNode(panel, options.value(page))) {
        std::fprintf(stderr, "halvane: no page node \"%s\"\n", qPrintable(options.value(page)));
        return 2;
    }

    if (options.isSet(edit) && !OpenCellEditor(panel, options.value(edit))) {
        std::fprintf(stderr, "halvane: no value cell \"%s\" on the page on view\n", qPrintable(options.value(edit)));
        return 2;
    }

    tessaly::frmMsgBox box(&panel);
    box.SetMessage(options.value(message));

    if (headless || options.isSet(screenshot)) {
        if (options.isSet(message))
            box.show();
        QApplication::processEvents(); // let the shown page lay itself out
        const QString file = options.isSet(screenshot) ? options.value(screenshot)
                                                       : QDir::current().filePath(QStringLiteral("halvane.png"));
        if (!(box.isVisible() ? RenderShaped(box) : RenderWithPopups(panel)).save(file)) {
            std::fprintf(stderr, "halvane: cannot write %s\n", qPrintable(file));
            return 1;
        }
        std::printf("%s\n", qPrintable(QFileInfo(file).absoluteFilePath()));
        return 0;
    }
    if (options.isSet(message))
        box.exec();
    return app.exec();
}
