// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The grid's Cell... properties: the rectangle and the looks of the current
// cell, the one that Row and Col name.
#include "platform/MSFlexGrid.h"

namespace tessaly {

// The current cell's rectangle, reported from the grid widget's own corner:
// the viewport sits inside the frame.
int MSFlexGrid::CellLeft() const
{
    return int(ToTwips(viewport()->x() + colLeft(m_col)));
}

int MSFlexGrid::CellTop() const
{
    return int(ToTwips(viewport()->y() + rowTop(m_row)));
}

int MSFlexGrid::CellWidth() const
{
    return int(ToTwips(m_colWidth[size_t(m_col)]));
}

int MSFlexGrid::CellHeight() const
{
    return int(ToTwips(m_rowHeight[size_t(m_row)]));
}

QColor MSFlexGrid::CellBackColor() const
{
    const CellStyle& style = currentStyle();
    return style.hasBack ? QColor::fromRgba(style.back) : QColor();
}

void MSFlexGrid::setCellBackColor(const QColor& color)
{
    CellStyle& style = currentStyle();
    style.hasBack = color.isValid();
    style.back = color.rgba();
    updateCell(m_row, m_col);
}

QColor MSFlexGrid::CellForeColor() const
{
    const CellStyle& style = currentStyle();
    return style.hasFore ? QColor::fromRgba(style.fore) : QColor();
}

void MSFlexGrid::setCellForeColor(const QColor& color)
{
    CellStyle& style = currentStyle();
    style.hasFore = color.isValid();
    style.fore = color.rgba();
    updateCell(m_row, m_col);
}

int MSFlexGrid::CellAlignment() const
{
    return currentStyle().alignment;
}

void MSFlexGrid::setCellAlignment(int alignment)
{
    if (alignment < LeftTop || alignment > General)
        Raise(errInvalidPropertyValue, QStringLiteral("Invalid property value"));
    currentStyle().alignment = int8_t(alignment);
    updateCell(m_row, m_col);
}

bool MSFlexGrid::CellFontBold() const
{
    return currentStyle().bold;
}

void MSFlexGrid::setCellFontBold(bool bold)
{
    currentStyle().bold = bold;
    updateCell(m_row, m_col);
}

} // namespace tessaly
