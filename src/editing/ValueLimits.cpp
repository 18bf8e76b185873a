// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The two channel items whose values have a range. When the text editor
// loses the focus, the cell where editing began is checked, and a value out
// of range is told and replaced by the item's default.
#include "editing/Editors.h"

#include "frame/ReportError.h"
#include "pages/CellStore.h"
#include "pages/PageGrids.h"
#include "platform/MsgBox.h"

#include <charconv>
#include <limits>
#include <string>

namespace tessaly {

namespace {

// The number at the start of a text: leading blanks, a sign, digits, a
// decimal point and an exponent, up to the first character that cannot
// continue it. A text without one gives 0. Read in the C locale whatever the
// user's, and a value too great for a double is infinite, not an error.
double ReadNumber(const QString& text)
{
    qsizetype at = 0;
    const qsizetype end = text.size();
    while (at < end && (text[at] == QLatin1Char(' ') || text[at] == QLatin1Char('\t')))
        ++at;
    std::string number;
    const auto take = [&](char c) { number += c; ++at; };
    const auto sign = [&] {
        if (at < end && (text[at] == QLatin1Char('+') || text[at] == QLatin1Char('-')))
            take(char(text[at].unicode()));
    };
    const auto digits = [&] {
        const qsizetype first = at;
        while (at < end && text[at] >= QLatin1Char('0') && text[at] <= QLatin1Char('9'))
            take(char(text[at].unicode()));
        return at - first;
    };

    sign();
    const bool negative = !number.empty() && number.front() == '-';
    qsizetype mantissa = digits();
    if (at < end && text[at] == QLatin1Char('.')) {
        take('.');
        mantissa += digits();
    }
    if (mantissa == 0)
        return 0;
    bool tinyExponent = false;
    if (at < end && (text[at] == QLatin1Char('e') || text[at] == QLatin1Char('E'))) {
        const std::string before = number;
        take('e');
        sign();
        tinyExponent = number.back() == '-';
        if (digits() == 0)
            number = before; // an exponent mark without digits ends the number before it
    }

    const char* first = number.data() + (number.front() == '+' ? 1 : 0);
    double value = 0;
    if (std::from_chars(first, number.data() + number.size(), value).ec == std::errc::result_out_of_range)
        value = tinyExponent ? 0.0 : std::numeric_limits<double>::infinity() * (negative ? -1 : 1);
    return value;
}

} // namespace

ItemBoundary Editors::SetBoundaryOfItem(const QString& strTitle, int32_t lReserved, int16_t nMin, int16_t nMax,
                                      int16_t nDefault)
{
    ItemBoundary boundary;
    OnErrorReport("Common_Function", "SetBoundaryOfItem", [&] {
        boundary.strTitle = strTitle;
        boundary.lReserved = lReserved;
        boundary.nMax = nMax;
        boundary.nMin = nMin;
        boundary.nDefault = nDefault;
    });
    return boundary;
}

void Editors::CheckOverflow()
{
    OnErrorReport("Common_Function", "CheckOverflow", [&] {
        // The remembered cell, not the current one, which may have moved on.
        const int16_t part = m_editPart;
        const int32_t row = m_editRow;
        const int16_t col = m_editCol;
        const ItemBoundary boundaries[] = {
            SetBoundaryOfItem(QStringLiteral("Primary CDMA Channel, A band"), 0, 0, 32767, 0),
            SetBoundaryOfItem(QStringLiteral("Secondary CDMA Channel, A band"), 0, 0, 32767, 0),
        };

        MSFlexGrid* grid = m_pages.Grid(part);
        if (!m_cells.HasRecord(part, row, col) || !m_cells.Attr(part, row, col).IsNumber)
            return;
        const QString title = grid->TextMatrix(row, 0);
        const ItemBoundary* boundary = nullptr;
        for (const ItemBoundary& candidate : boundaries) {
            if (title == candidate.strTitle) {
                boundary = &candidate;
                break;
            }
        }
        if (!boundary)
            return;

        const QString text = grid->TextMatrix(row, col);
        const double value = ReadNumber(text);
        if (value >= boundary->nMin && value <= boundary->nMax)
            return;
        MsgBox(boundary->strTitle + QStringLiteral(" doesn't allow the value : ") + text);
        if (m_panel.Ended())
            return;
        m_pages.Grid(part)->setTextMatrix(row, col, QString::number(boundary->nDefault));
    });
}

} // namespace tessaly
