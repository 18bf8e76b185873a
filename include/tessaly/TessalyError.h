// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

/**
 * \file TessalyError.h
 * \brief The error type of the panel's public interface, TessalyError.
 */
#pragma once

#include <tessaly/tessaly_export.h>

#include <QString>

#include <cstdint>
#include <stdexcept>

/**
 * \brief A failure that crosses the panel's public boundary, with a number
 * and a description.
 *
 * The one error type that crosses the panel's public boundary, either way: a
 * model throws it to report a failed command, and the host methods that
 * report to their caller (Tessaly::AddTab, Tessaly::RemoveTab) throw it. It
 * carries a number and a description, as the panel's error report shows them.
 *
 * The panel itself throws 5 from RemoveTab for a page it refuses (the
 * description says which and why), and 380 ("Invalid property value") from
 * AddTab for a column count below 1. A model chooses its own numbers; the
 * panel shows them as they are.
 *
 * \code
 * throw TessalyError(7, QStringLiteral("The handset keeps no backup"));
 * \endcode
 */
class TESSALY_EXPORT TessalyError : public std::runtime_error {
public:
    /**
     * \brief Makes an error of the given number and description.
     * \param number The error's number, as the error report shows it.
     * \param description What went wrong, in one line; what() gives it in
     *        UTF-8.
     */
    TessalyError(int32_t number, const QString& description);

    /// \brief The error's number, as given to the constructor.
    /// \return The number.
    int32_t number() const noexcept { return m_number; }
    /// \brief The error's description, as given to the constructor.
    /// \return The description.
    const QString& description() const noexcept { return m_description; }

private:
    int32_t m_number;
    QString m_description;
};
