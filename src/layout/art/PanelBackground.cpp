// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The panel: a title band with room for the window buttons at its right end,
// the page tree and progress group on a card at the left with the command
// buttons below it, and the data area at the right, whose dark header carries
// the page's gold title and the Restore button above the framed page.
#include "Art.h"
#include "Chrome.h"
#include "Palette.h"

#include <QPainter>

namespace tessaly::art {

namespace {

// The tree lies on a light strip one pixel wider than itself on the left;
// the tree's well is as wide as the strip.
const QRect TreeWell(21, 83, 193, 348);
const QRect Percent(120, 451, 81, 17);
const QRect Bar(32, 472, 169, 17); // shows the empty bar's bitmap cut to this size
const QRect DataArea(240, 38, 466, 516);
const int HeaderBottom = 78;        // the data area's header takes the rows above this
const QRect Page(248, 89, 449, 457);

void PaintLeftColumn(QPainter& painter)
{
    PaintCard(painter, QRect(12, 38, 211, 457));
    painter.fillRect(TreeWell, QColor(0xFA, 0xFA, 0xFA));
    PaintSunkenFrame(painter, TreeWell);
    PaintSunkenFrame(painter, Percent);
    // The bar cuts off the right and bottom edges of its bitmap: they are
    // drawn here, just outside it.
    painter.fillRect(QRect(Bar.right() + 1, Bar.top(), 1, Bar.height() + 1), TrackEdge);
    painter.fillRect(QRect(Bar.left(), Bar.bottom() + 1, Bar.width() + 1, 1), TrackEdge);
}

void PaintDataArea(QPainter& painter)
{
    const QRectF outline = QRectF(DataArea).adjusted(0.5, 0.5, -0.5, -0.5);
    painter.setPen(WindowEdge);
    painter.setBrush(Card);
    painter.drawRoundedRect(outline, 4, 4);
    // The header is the card's top again in slate, reaching a little lower
    // so that its own rounded bottom lies under the rule and the card's
    // strip painted over it.
    QRectF header = outline;
    header.setBottom(HeaderBottom + 8);
    painter.setBrush(Vertical(DataArea.top(), HeaderBottom, SlateTop, SlateBottom));
    painter.drawRoundedRect(header, 4, 4);
    painter.fillRect(QRect(DataArea.left() + 4, DataArea.top() + 1, DataArea.width() - 8, 1), QColor(0x62, 0x71, 0x80));
    const int inner = DataArea.left() + 1, width = DataArea.width() - 2;
    painter.fillRect(QRect(inner, HeaderBottom, width, 1), Amber);
    painter.fillRect(QRect(inner, HeaderBottom + 1, width, 1), AmberDark);
    painter.fillRect(QRect(inner, HeaderBottom + 2, width, 8), Card);
    PaintSunkenFrame(painter, Page);
}

} // namespace

void PaintPanel(QPainter& painter)
{
    painter.fillRect(QRect(0, 0, 720, 562), Ground);
    PaintTitleBand(painter, 720, 33);
    PaintEmblem(painter, QPoint(16, 7));
    PaintLeftColumn(painter);
    PaintDataArea(painter);
    painter.setPen(WindowEdge);
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(QRectF(0.5, 0.5, 719, 561));
}

QList<Bitmap> PanelBackground()
{
    return {{QStringLiteral("Tessaly"), {720, 562}, PaintPanel}};
}

} // namespace tessaly::art
