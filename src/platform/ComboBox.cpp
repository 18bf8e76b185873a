// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "platform/ComboBox.h"

#include <QEvent>

namespace tessaly {

ComboBox::ComboBox(QWidget* parent)
    : FormControl(parent)
{
    setEditable(false);
    connect(this, &QComboBox::currentIndexChanged, this, &ComboBox::Click);
}

// Qt makes a list's drop-down at its first change of font, which costs more
// than the rest of the box; a list that has not dropped down yet takes its
// font when it first does.
void ComboBox::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::FontChange && !m_droppedDown)
        QWidget::changeEvent(event);
    else
        QComboBox::changeEvent(event);
}

void ComboBox::showPopup()
{
    if (!m_droppedDown) {
        m_droppedDown = true;
        QEvent fontChange(QEvent::FontChange);
        QComboBox::changeEvent(&fontChange);
    }
    QComboBox::showPopup();
}

void ComboBox::Clear()
{
    const QSignalBlocker quiet(this);
    clear();
}

void ComboBox::CopyFrom(const ComboBox& model)
{
    CopyCommon(model);
    for (int i = 0; i < model.count(); ++i)
        AddItem(model.itemText(i));
}

void ComboBox::AddItem(const QString& item)
{
    const QSignalBlocker quiet(this);
    const int chosen = currentIndex();
    addItem(item);
    setCurrentIndex(chosen);
}

void ComboBox::setListIndex(int index)
{
    if (index < -1 || index >= count())
        Raise(errInvalidPropertyValue, QStringLiteral("Invalid property value"));
    setCurrentIndex(index);
}

} // namespace tessaly
