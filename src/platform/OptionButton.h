// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// OptionButton: the forms platform's option button.
#pragma once

#include "platform/FormControl.h"

#include <QRadioButton>

namespace tessaly {

// A round option button; the one chosen of its container is its Value.
class OptionButton : public FormControl<QRadioButton> {
    Q_OBJECT
    Q_PROPERTY(bool Value READ Value WRITE setValue)
public:
    explicit OptionButton(QWidget* parent = nullptr)
        : FormControl(parent)
    {
    }
    bool Value() const { return isChecked(); }
    void setValue(bool value) { setChecked(value); }
};

} // namespace tessaly
