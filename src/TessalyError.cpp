// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <tessaly/TessalyError.h>

TessalyError::TessalyError(int32_t number, const QString& description)
    : std::runtime_error(description.toStdString())
    , m_number(number)
    , m_description(description)
{
}
