// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The one error type that crosses the panel's public boundary, either way: a
// model throws it to report a failed command, and the host methods that
// report to their caller (AddTab, RemoveTab) throw it. It carries a number
// and a description, as the panel's error report shows them.
#pragma once

#include <tessaly/tessaly_export.h>

#include <QString>

#include <cstdint>
#include <stdexcept>

class TESSALY_EXPORT TessalyError : public std::runtime_error {
public:
    TessalyError(int32_t number, const QString& description);

    int32_t number() const noexcept { return m_number; }
    const QString& description() const noexcept { return m_description; }

private:
    int32_t m_number;
    QString m_description;
};
