// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The platform's standard message box: a prompt and one OK button, with or
// without the critical icon, under the application's title. It is modal and
// returns when the user has closed it.
#pragma once

#include <QString>

namespace tessaly {

enum class MsgBoxStyle { OkOnly, Critical };

void MsgBox(const QString& prompt, MsgBoxStyle style = MsgBoxStyle::OkOnly);

} // namespace tessaly
