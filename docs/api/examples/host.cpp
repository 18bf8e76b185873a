// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: CC0-1.0
//
// A small host of the panel, the example of the API documentation: a model of
// a handset that keeps four NV items in memory, bound to a panel in a window
// of its own, with an added page, calls by name and a script. The tests build
// it against the library (api_docs_example).
#include <tessaly/Tessaly.h>

#include <QApplication>
#include <QJSEngine>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <cstdint>

//! [model]
// A handset of four NV items on COM7, kept in memory.
class Handset : public IBaseModel {
public:
    explicit Handset(Tessaly& panel)
        : m_panel(panel)
    {
    }

    // NV Read: the items into page 0, "System NAM1", one row each.
    void NVRead() override
    {
        const auto count = int16_t(m_values.size());
        Q_EMIT GetTotalProgressCount(count, Port);
        m_panel.SetNVFieldItemCount(0, count);
        for (int16_t row = 1; row <= count; ++row) {
            const int index = row - 1;
            m_panel.AddItemToGrid2(0, {}, false, {}, Titles[index], row, 0);
            m_panel.AddItemToGrd(0, QStringLiteral("#####"), true, false, {}, m_values[index], row, 1);
            Q_EMIT StepIt(Port);
        }
        m_panel.SetBasicInfo(QStringLiteral("SIM800-1.0"), QStringLiteral("2026-11-25"),
                             QStringLiteral("8052A1F3"), QString(), QStringLiteral("1200"), QStringLiteral("35"));
        m_lastRead = m_values;
    }

    // NV Write: the values as the user left them; a value that is not a
    // number fails the command, and nothing is written.
    void NVWrite() override
    {
        QStringList values;
        for (int row = 1; row <= m_values.size(); ++row) {
            const QString value = m_panel.GetItemFromGrd(0, row, 0); // column 0: the first value column
            bool number = false;
            value.toInt(&number);
            if (!number)
                throw TessalyError(1001, QStringLiteral("%1 is not a number").arg(Titles[row - 1]));
            values << value;
        }
        Q_EMIT GetTotalProgressCount(1, Port);
        m_values = values;
        Q_EMIT StepIt(Port);
    }

    // Restore: the values of the last read, on the handset and on the page.
    void NVRestore() override
    {
        m_values = m_lastRead;
        NVRead();
    }

    void GetModelName(QString& name) override { name = QStringLiteral("SIM-800"); }
    void GetPortNumber(QString& port) override { port = QString::number(Port); } // "SIM-800  (COM7)"

private:
    static constexpr int32_t Port = 7;
    static inline const QString Titles[] = {QStringLiteral("Home SID"), QStringLiteral("Home NID"),
                                            QStringLiteral("Slot Cycle Index"), QStringLiteral("Access Overload Class")};
    Tessaly& m_panel;
    QStringList m_values = {QStringLiteral("4139"), QStringLiteral("65535"), QStringLiteral("2"), QStringLiteral("5")};
    QStringList m_lastRead;
};
//! [model]

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);

    //! [panel]
    QWidget window;
    window.resize(720, 562);
    auto* panel = new Tessaly(&window); // 720 x 562 pixels, at the window's top left
    Handset handset(*panel);            // the host owns the model, and keeps it while it is bound
    panel->SetModelDLL(&handset);       // the label reads "SIM-800  (COM7)"
    //! [panel]

    //! [added page]
    try {
        const int16_t page = panel->AddTab(QStringLiteral("Roaming List"), 3); // 21: titles and two values
        panel->SetNVFieldItemCount(page, 1);
        panel->AddItemToGrid2(page, {}, false, {}, QStringLiteral("Preferred SID"), 1, 0);
        panel->AddItemToGrd(page, QStringLiteral("#####"), true, false, {}, QStringLiteral("4139"), 1, 1);
        qInfo("Preferred SID: %s", qPrintable(panel->GetItemFromGrd(page, 1, 0))); // "4139"
        panel->RemoveTab(page);
        panel->RemoveTab(page); // throws: page 21 has gone
    } catch (const TessalyError& error) {
        qWarning("The panel refused: %d %s", error.number(), qPrintable(error.description()));
    }
    //! [added page]

    //! [by name]
    QObject::connect(panel, &TessalyByName::CallFailed, [](const QString& method, int number, const QString& description) {
        qWarning("%s failed: %d %s", qPrintable(method), number, qPrintable(description));
    });
    QMetaObject::invokeMethod(panel, "SetNVFieldItemCount", Q_ARG(short, 1), Q_ARG(short, 4));
    QMetaObject::invokeMethod(panel, "SetNVFieldItemCount", Q_ARG(int, 1), Q_ARG(int, 4));
    short page = 0;
    QMetaObject::invokeMethod(panel, "AddTab", Q_RETURN_ARG(short, page), Q_ARG(QString, QStringLiteral("Mine")),
                              Q_ARG(short, 3)); // 21
    int wide = 0;
    QMetaObject::invokeMethod(panel, "AddTab", Q_RETURN_ARG(int, wide), Q_ARG(QString, QStringLiteral("Too wide")),
                              Q_ARG(int, 70000)); // -1, after CallFailed("AddTab", 6, "Overflow")
    //! [by name]

    //! [script]
    QJSEngine engine;
    QJSEngine::setObjectOwnership(panel, QJSEngine::CppOwnership); // the window deletes the panel
    engine.globalObject().setProperty(QStringLiteral("panel"), engine.newQObject(panel));
    engine.evaluate(QStringLiteral("panel.SetNVFieldItemCount(2, 1);"
                                   "panel.AddItemToGrid2(2, '', false, '', 'PPP User ID', 1, 0);"
                                   "panel.AddItemToGrd(2, '', false, false, '', 'user@tessaly.example', 1, 1);"));
    const QJSValue user = engine.evaluate(QStringLiteral("panel.GetItemFromGrd(2, 1, 0)"));
    qInfo("PPP User ID: %s", qPrintable(user.toString())); // "user@tessaly.example"
    //! [script]

    window.show();
    return app.exec();
}
