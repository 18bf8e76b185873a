// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

/// \file MessageBox.h
/// \brief The panel's own message box, for a host that wants to show a text
/// as the panel shows its own.
#pragma once

#include <tessaly/tessaly_export.h>

class QDialog;
class QString;
class QWidget;

/// \brief Makes the panel's own message box, in the panel's skin, holding
/// `text`.
///
/// The box is the one the panel's commands show their messages in: its text
/// wraps within the box, a text longer than it has room for is cut at a whole
/// line with the whole text in its tooltip, and its OK closes it. It is not
/// shown yet: `exec()` waits until the user presses OK, `show()` shows it
/// without waiting (to render it, say).
///
/// \param panel the panel the box belongs to: its parent, which deletes it
///        with itself unless the host deletes it first.
/// \param text the message.
/// \return the box, a QDialog child of `panel`.
TESSALY_EXPORT QDialog* TessalyCreateMessageBox(QWidget* panel, const QString& text);
