// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// The form controls in twips, control arrays and the dynamic arrays.
#include "platform/Arrays.h"
#include "platform/ControlArray.h"
#include "platform/Controls.h"
#include "support/RuntimeErrors.h"

#include <QWidget>

#include <gtest/gtest.h>

using namespace tessaly;

TEST(FormControl, ContainerCarriesPlaceAndVisibilityAndOnlyAShownEnabledControlTakesFocus)
{
    QWidget form;
    form.show();
    Frame first(&form), second(&form);
    second.hide();
    TextBox box(&first);
    box.Move(150, 300);
    box.setContainer(&second);
    EXPECT_EQ(box.Container(), &second);
    EXPECT_EQ(box.pos(), QPoint(10, 20));
    // Shown by its own setting, hidden with its container.
    EXPECT_TRUE(box.Visible() && !box.isVisible());
    EXPECT_EQ(ErrorNumberOf([&] { box.SetFocus(); }), errInvalidProcedureCall);
    second.show();
    box.setEnabled(false);
    EXPECT_EQ(ErrorNumberOf([&] { box.SetFocus(); }), errInvalidProcedureCall);
}

TEST(FormControl, ComboRefusesAnIndexOutsideItsList)
{
    ComboBox combo;
    combo.AddItem(QStringLiteral("1"));
    EXPECT_EQ(combo.ListIndex(), -1) << "adding chooses nothing";
    EXPECT_EQ(ErrorNumberOf([&] { combo.setListIndex(1); }), errInvalidPropertyValue);
}

TEST(ControlArray, LoadedElementCopiesTheModelAndStartsHidden)
{
    QWidget form;
    ControlArray<TextBox> txtEdit(QStringLiteral("txtEdit"));
    auto* model = new TextBox(&form);
    model->Move(360, 600, 1335, 360);
    model->setText(QStringLiteral("Text2"));
    model->setFontSize(8.25f);
    txtEdit.Adopt(0, model);
    txtEdit.Load(3);

    TextBox* loaded = txtEdit(3);
    EXPECT_EQ(QStringList({loaded->objectName(), loaded->Text()}), QStringList({"txtEdit(3)", "Text2"}));
    EXPECT_EQ(std::tuple(loaded->geometry(), loaded->font().pointSizeF()), std::tuple(model->geometry(), 8.25));
    EXPECT_FALSE(loaded->Visible());
}

TEST(ControlArray, MissingAndDoubleElementsAreRunTimeErrors)
{
    QWidget form;
    ControlArray<Frame> frames(QStringLiteral("fraFlexGrid"));
    EXPECT_EQ(ErrorNumberOf([&] { frames.Load(1); }), errArrayElementMissing); // nothing to copy
    frames.Adopt(0, new Frame(&form));
    frames.Load(1);
    EXPECT_EQ(ErrorNumberOf([&] { frames.Load(1); }), errObjectAlreadyLoaded);
    EXPECT_EQ(ErrorNumberOf([&] { frames(2); }), errArrayElementMissing);
    frames.Unload(1);
    EXPECT_FALSE(frames.exists(1));
    EXPECT_EQ(frames.UBound(), 0);
    EXPECT_EQ(form.findChildren<Frame*>().size(), 1);
    EXPECT_EQ(ErrorNumberOf([&] { frames.Unload(1); }), errArrayElementMissing);
}

TEST(Arrays, OutOfBoundsIsSubscriptOutOfRange)
{
    Array1D<int> list;
    list.ReDimPreserve(2);
    list(2) = 5;
    list.ReDimPreserve(3);
    EXPECT_EQ(list(2), 5);
    EXPECT_EQ(ErrorNumberOf([&] { list(4); }), errSubscriptOutOfRange);
}
