// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// ComboBox: the forms platform's drop-down list.
#pragma once

#include "platform/FormControl.h"

#include <QComboBox>

namespace tessaly {

// A drop-down list whose text can only be picked, never typed. Click comes
// whenever the chosen item changes, by the user or by setting ListIndex,
// before the change returns; filling and emptying the list raise nothing.
class ComboBox : public FormControl<QComboBox> {
    Q_OBJECT
    Q_PROPERTY(int ListIndex READ ListIndex WRITE setListIndex)
    Q_PROPERTY(QString Text READ Text)
public:
    explicit ComboBox(QWidget* parent = nullptr);
    void CopyFrom(const ComboBox& model);

    // Appends an item; the choice, or the lack of one, stays as it was.
    void AddItem(const QString& item);
    void Clear();
    // Opens the list under the box, as F4 does.
    void DropDown() { showPopup(); }
    int ListCount() const { return count(); }
    // -1 when no item is chosen; a position outside the list is refused.
    int ListIndex() const { return currentIndex(); }
    void setListIndex(int index);
    QString Text() const { return currentText(); }
    void showPopup() override;

signals:
    void Click();

protected:
    void changeEvent(QEvent* event) override;

private:
    bool m_droppedDown = false;
};

} // namespace tessaly
