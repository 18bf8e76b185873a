// halvane: the phone service tool's host window around the Tessaly panel.
// Without a display, or with --screenshot FILE, it renders the panel to a
// PNG file, prints the file's path and exits. With --message TEXT it shows
// the panel's own message box with that text over the panel, or renders the
// box alone, its cut corners transparent.
#include "DemoItems.h"

#include "frame/frmMsgBox.h" // the panel's own box, which no host method opens

#include <tessaly/Tessaly.h>

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <QMouseEvent>
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

// Clicks the page tree's node as a user would, so that its page shows.
bool ClickTreeNode(Tessaly& panel, const QString& text)
{
    auto* tree = panel.findChild<QTreeWidget*>(QStringLiteral("OrvenTreeView1"));
    const QList<QTreeWidgetItem*> found = tree ? tree->findItems(text, Qt::MatchExactly | Qt::MatchRecursive) : QList<QTreeWidgetItem*>();
    if (found.isEmpty())
        return false;
    const QPointF at = tree->visualItemRect(found.first()).center();
    const QPointF global = tree->viewport()->mapToGlobal(at);
    for (QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        QMouseEvent event(type, at, global, Qt::LeftButton,
                          type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(tree->viewport(), &event);
    }
    return true;
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

    QCommandLineParser options;
    options.setApplicationDescription(QStringLiteral("Phone service tool with the Tessaly settings panel."));
    options.addHelpOption();
    const QCommandLineOption screenshot(QStringLiteral("screenshot"),
                                        QStringLiteral("Render the panel to <file> and exit."), QStringLiteral("file"));
    const QCommandLineOption page(QStringLiteral("page"), QStringLiteral("Show the page of tree node <node>."),
                                  QStringLiteral("node"));
    const QCommandLineOption message(QStringLiteral("message"),
                                     QStringLiteral("Show the panel's message box with <text>."), QStringLiteral("text"));
    options.addOptions({screenshot, page, message});
    options.process(app);
    const bool headless = DrawsNowhere();

    QWidget window;
    window.setWindowTitle(QStringLiteral("Halvane"));
    Tessaly panel(&window);
    window.setFixedSize(panel.size());
    FillDemoItems(panel);
    window.show();

    if (options.isSet(page) && !ClickTreeNode(panel, options.value(page))) {
        std::fprintf(stderr, "halvane: no page node \"%s\"\n", qPrintable(options.value(page)));
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
        if (!(box.isVisible() ? RenderShaped(box) : panel.grab().toImage()).save(file)) {
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
