// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// How a label draws its caption: as QLabel draws one that fits; one line
// too wide shrinks, wrapped lines stop at the last whole line that fits.
// The caption is drawn as ink once and copied at every later paint.
#include "platform/Label.h"

#include <QPainter>
#include <QStyle>
#include <QStyleOption>
#include <QTextLayout>

namespace tessaly {

namespace {

// The caption's font, made smaller in steps of a quarter point until one
// line of `text` is no wider than `width`; never below 6 points.
QFont ShrunkToFit(QFont font, const QString& text, int width)
{
    while (QFontMetrics(font).horizontalAdvance(text) > width && font.pointSizeF() > 6)
        font.setPointSizeF(font.pointSizeF() - 0.25);
    return font;
}

// Draws the whole lines of wrapped `text` that fit `box`; the last of them
// ends in an ellipsis when more text follows.
void DrawWholeLines(QPainter& painter, const QRect& box, const QString& text, Qt::Alignment alignment)
{
    const QFontMetrics metrics(painter.font());
    QTextLayout layout(text, painter.font());
    QTextOption option(alignment);
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.beginLayout();
    QList<std::pair<int, int>> lines; // start and length of each line that fits
    bool more = false;
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(box.width());
        // Drawn below the lines before it, a line spacing apart.
        if (lines.size() * metrics.lineSpacing() + metrics.height() > box.height()) {
            more = true;
            break;
        }
        lines.append({line.textStart(), line.textLength()});
    }
    layout.endLayout();
    const int flags = int(alignment & Qt::AlignHorizontal_Mask) | Qt::AlignTop;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        QString line = text.mid(lines[i].first, lines[i].second).trimmed();
        if (more && i == lines.size() - 1)
            line = metrics.elidedText(line + QChar(0x2026), Qt::ElideRight, box.width());
        painter.drawText(QRect(box.left(), box.top() + int(i) * metrics.lineSpacing(), box.width(), metrics.lineSpacing()),
                         flags, line);
    }
}

} // namespace

void Label::paintEvent(QPaintEvent*)
{
    // As QLabel draws a caption that fits: wrapped where the label wraps, its
    // mnemonic shown where the label has a buddy.
    int flags = QStyle::visualAlignment(layoutDirection(), alignment()) | Qt::TextForceLeftToRight;
    if (wordWrap())
        flags |= Qt::TextWordWrap;
    if (buddy()) {
        QStyleOption option;
        option.initFrom(this);
        flags |= Qt::TextShowMnemonic;
        if (!style()->styleHint(QStyle::SH_UnderlineShortcut, &option, this))
            flags |= Qt::TextHideMnemonic;
    }
    const QString text = Caption();
    const TextInk::Key key{text, font(), palette().color(foregroundRole()).rgba(),
                           flags, size()};
    QPainter painter(this);
    if (frameShape() != QFrame::NoFrame)
        drawFrame(&painter);
    m_ink.paint(painter, {}, key, [&](QPainter& ink) {
        const QRect box = contentsRect();
        const QFontMetrics metrics(font());
        const bool wide = !wordWrap() && metrics.horizontalAdvance(text) > box.width();
        const bool tall = wordWrap() && metrics.boundingRect(box, Qt::TextWordWrap, text).height() > box.height();
        if (!wide && !tall) {
            style()->drawItemText(&ink, box, flags, palette(), isEnabled(), text, foregroundRole());
            return;
        }
        ink.setPen(palette().color(QPalette::WindowText));
        if (wide) {
            ink.setFont(ShrunkToFit(font(), text, box.width()));
            ink.drawText(box, int(alignment()), text);
        } else {
            DrawWholeLines(ink, box, text, alignment());
        }
    });
}

} // namespace tessaly
