// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// The host methods from Qt's script engine, as a script host calls them: all
// twenty-two by their names on the panel with JavaScript's numbers, leaving
// the panel as the same calls from C++ leave a twin of it, and a failure told
// by CallFailed, never thrown into the script.
#include "platform/MSFlexGrid.h"
#include "support/PanelFixture.h"
#include "support/TestModel.h"

#include <QJSEngine>
#include <QSignalSpy>

namespace {

using ScriptHostTest = PanelFixture;

QJSValue Evaluate(QJSEngine& engine, const QString& script)
{
    const QJSValue value = engine.evaluate(script);
    EXPECT_FALSE(value.isError()) << qPrintable(value.toString());
    return value;
}

// What a host's calls leave in a panel: each control's enabled state and
// visibility, each grid's rows and every cell's text, and the panel's pixels.
struct Left {
    QStringList controls;
    QImage pixels;

    explicit Left(Tessaly& panel)
        : pixels(panel.grab().toImage())
    {
        for (const QWidget* widget : panel.findChildren<QWidget*>()) {
            if (widget->objectName().isEmpty())
                continue;
            QString state = QStringLiteral("%1 %2 %3").arg(widget->objectName()).arg(widget->isEnabled()).arg(widget->isVisible());
            if (const auto* grid = qobject_cast<const tessaly::MSFlexGrid*>(widget))
                for (int row = 0; row < grid->Rows(); ++row)
                    for (int col = 0; col < grid->Cols(); ++col)
                        state += QLatin1Char('|') + grid->TextMatrix(row, col);
            controls << state;
        }
        controls.sort();
    }
};

} // namespace

TEST_F(ScriptHostTest, EveryHostMethodCalledFromTheScriptEngineDoesWhatTheCppCallDoes)
{
    QJSEngine engine;
    QJSEngine::setObjectOwnership(host.get(), QJSEngine::CppOwnership);
    TestModel model;
    QJSEngine::setObjectOwnership(&model, QJSEngine::CppOwnership);
    engine.globalObject().setProperty(QStringLiteral("panel"), engine.newQObject(host.get()));
    engine.globalObject().setProperty(QStringLiteral("model"), engine.newQObject(&model));
    QSignalSpy failures(host.get(), &TessalyByName::CallFailed);

    Evaluate(engine, QStringLiteral(R"(
        panel.SetNVFieldItemCount(0, 12);
        panel.AddItemToGrid2(0, "", false, "", "Home SID", 1, 0);
        panel.AddItemToGrd(0, "#####", true, false, "", "4139", 1, 1);
        panel.SetGrid1Rows(40);
        panel.SetGrid2Rows(41);
        panel.SetSettingRows(42);
        panel.SetSystemRows(43);
        panel.SetProfileCount(4);
        panel.SetActiveProfileIndex(2);
        panel.SetActiveProfileEnable(false);
        panel.SetProfileCountEnable(false);
        panel.SetBasicInfo("HV800-2.31.07", "2024-03-18", "8F3A21C4", "A0000031F4C2D9", "18342", "1207");
        panel.SetSecurityInfo("123456", true, "4139", "a0", "a1", "ak", "s0", "s1", "sc", "b0", "b1", "bc", "2");
        var added = panel.AddTab("Mine", 3);
        panel.AddItemToGrd(added, "", false, false, "", "in the added page", 1, 1);
        panel.SetModelDLL(model);
        var gone = panel.AddTab("Gone", 2);
        panel.RemoveTab(gone);
    )"));
    EXPECT_EQ(failures.size(), 0) << qPrintable(failures.value(0).value(2).toString());
    EXPECT_EQ(Evaluate(engine, QStringLiteral("panel.GetItemFromGrd(0, 1, 0)")).toString(), "4139");
    EXPECT_EQ(Evaluate(engine, QStringLiteral("panel.GetItemFromGrd(added, 1, 0)")).toString(), "in the added page");
    EXPECT_EQ(Evaluate(engine, QStringLiteral("panel.GetProfileCount()")).toInt(), 4);

    // The same calls from C++ on a twin leave it the same.
    Tessaly twin;
    twin.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&twin));
    TestModel twinModel;
    twin.SetNVFieldItemCount(0, 12);
    twin.AddItemToGrid2(0, {}, false, {}, QStringLiteral("Home SID"), 1, 0);
    twin.AddItemToGrd(0, QStringLiteral("#####"), true, false, {}, QStringLiteral("4139"), 1, 1);
    twin.SetGrid1Rows(40);
    twin.SetGrid2Rows(41);
    twin.SetSettingRows(42);
    twin.SetSystemRows(43);
    twin.SetProfileCount(4);
    twin.SetActiveProfileIndex(2);
    twin.SetActiveProfileEnable(false);
    twin.SetProfileCountEnable(false);
    twin.SetBasicInfo("HV800-2.31.07", "2024-03-18", "8F3A21C4", "A0000031F4C2D9", "18342", "1207");
    twin.SetSecurityInfo("123456", true, "4139", "a0", "a1", "ak", "s0", "s1", "sc", "b0", "b1", "bc", "2");
    const int16_t added = twin.AddTab(QStringLiteral("Mine"), 3);
    twin.AddItemToGrd(added, {}, false, false, {}, QStringLiteral("in the added page"), 1, 1);
    twin.SetModelDLL(&twinModel);
    twin.RemoveTab(twin.AddTab(QStringLiteral("Gone"), 2));
    // The getters give in the script what they give in C++.
    EXPECT_EQ(Evaluate(engine, QStringLiteral("panel.GetActiveProfileIndex()")).toInt(), twin.GetActiveProfileIndex());
    EXPECT_EQ(Evaluate(engine, QStringLiteral("[panel.GetSecCode(), panel.GetLockCode(), panel.GetAKey(0), "
                                              "panel.GetAKey(1)]"))
                  .toVariant()
                  .toStringList(),
              (QStringList{twin.GetSecCode(), twin.GetLockCode(), twin.GetAKey(0), twin.GetAKey(1)}));
    const Left byScript(*host);
    const Left byCpp(twin);
    EXPECT_EQ(byScript.controls, byCpp.controls);
    EXPECT_TRUE(byScript.pixels == byCpp.pixels);

    // The model the script gave is the one NV Read runs.
    clickCommand(0);
    EXPECT_EQ(model.calls, QStringList{"NVRead"});
}

TEST_F(ScriptHostTest, FailureIsToldByCallFailedNeverThrownIntoTheScript)
{
    QJSEngine engine;
    QJSEngine::setObjectOwnership(host.get(), QJSEngine::CppOwnership);
    engine.globalObject().setProperty(QStringLiteral("panel"), engine.newQObject(host.get()));
    QSignalSpy failures(host.get(), &TessalyByName::CallFailed);
    EXPECT_EQ(Evaluate(engine, QStringLiteral("panel.RemoveTab(21); panel.AddTab('A', 70000)")).toInt(), -1);
    ASSERT_EQ(failures.size(), 2);
    EXPECT_EQ(failures[0][0].toString(), "RemoveTab");
    EXPECT_EQ(failures[1][0].toString(), "AddTab");
    EXPECT_EQ(failures[1][2].toString(), "Overflow");
}
