// Every control of the panel where the layout puts it, in its stacking order
// and with its look; the focus chain; the names told to screen readers.
#include "layout/SkinArt.h"
#include "support/PanelFixture.h"

#include <QAbstractButton>

using namespace tessaly;

namespace {

// One container's controls, from the top of its stacking order to the
// bottom, with their places in twips. The page frames are where start-up
// brings them.
struct Placed {
    const char* name;
    int left, top, width, height;
};

const std::pair<const char*, std::vector<Placed>> Containers[] = {
    {"Tessaly", {
        {"fralabelPercent", 1800, 6760, 1215, 260}, {"pbProgress", 480, 8880, 2535, 255},
        {"pbProgressBg", 480, 7080, 2535, 255}, {"picCommand(3)", 8840, 680, 1670, 375},
        {"fraMIPProfile", 3720, 1340, 6735, 6855}, {"picCommand(2)", 2250, 7520, 879, 460},
        {"picCommand(1)", 1300, 7520, 879, 460}, {"OrvenTreeView1", 330, 1260, 2865, 5190},
        {"fraFlexGrid(0)", 3720, 1340, 6735, 6855}, {"fraBasicInfo", 3720, 1340, 6735, 6855},
        {"picCommand(0)", 360, 7520, 879, 460}, {"lblProcess", 480, 6660, 1335, 375},
        {"lblModelPortInfo", 480, 830, 2535, 375}, {"lblDataTitle", 4015, 645, 4095, 495},
        {"lblTitle", 630, 120, 9255, 375}, {"imgWndClose", 10320, 120, 255, 255},
        {"imgWndMin", 10020, 120, 255, 255}, {"Shape1", 320, 1280, 375, 5100},
        {"lblTitleShadow", 645, 135, 9255, 360},
    }},
    {"fralabelPercent", {{"lblPercent", 0, 0, 1215, 260}}},
    {"fraMIPProfile", {
        {"cmbProfileCount", 4200, 1440, 1215, 360}, {"rbMIPProfile(0)", 600, 840, 3135, 495},
        {"rbMIPProfile(1)", 600, 1320, 3135, 495}, {"rbMIPProfile(2)", 600, 1800, 3135, 495},
        {"rbMIPProfile(3)", 600, 2280, 3135, 495}, {"rbMIPProfile(5)", 600, 3240, 3135, 495},
        {"rbMIPProfile(4)", 600, 2760, 3135, 495}, {"Label1", 3960, 960, 1815, 375},
        {"imgMIPProfile", 0, 0, 6750, 7005},
    }},
    {"fraFlexGrid(0)", {{"txtEdit(0)", -1, 0, 0, 0}, {"cboEditCell(0)", 240, 240, 1695, 315},
                        {"MSFlexGrid1(0)", -1, 0, 0, 0}}}, // start-up places the editor and grid
    {"fraBasicInfo", {
        {"txtESN", 2760, 1800, 2835, 300}, {"txtPhoneSWVer", 2760, 840, 2835, 300},
        {"txtWarrantyDate", 2760, 1320, 2835, 300}, {"txtMEID", 2760, 2280, 2835, 300},
        {"txtLifeTimer", 2760, 2760, 2835, 300}, {"txtLifeCnt", 2760, 3240, 2835, 300},
        {"imgDataBack", 0, 0, 7260, 7020},
    }},
};

// Font family, size in points and weight; fore and back colour where stored.
struct Look {
    const char* name;
    const char* font;
    double points;
    bool bold;
    QColor fore, back;
};

const Look Looks[] = {
    {"lblTitle", "Tahoma", 9.75, true, Qt::black, {}},
    {"lblTitleShadow", "Tahoma", 9.75, true, Qt::white, {}},
    {"lblModelPortInfo", "Tahoma", 9.75, true, QColor(0x51, 0x51, 0x51), {}},
    {"lblDataTitle", "Tahoma", 18, false, QColor(0xFF, 0xD9, 0x4F), {}},
    {"lblProcess", "Tahoma", 14.25, false, Qt::black, {}},
    {"lblPercent", "Tahoma", 8.25, true, Qt::black, {}},
    {"fraFlexGrid(0)", "Tahoma", 8.25, false, {}, {}},
    {"fraMIPProfile", "굴림", 9, false, {}, {}},
    {"fraBasicInfo", "굴림", 9, false, {}, {}},
    {"cmbProfileCount", "굴림", 9, false, {}, {}},
    {"Label1", "굴림", 9, false, Qt::black, {}},
    {"rbMIPProfile(3)", "굴림", 9, false, Qt::black, Qt::white},
    {"txtESN", "Tahoma", 11.25, true, {}, QColor(0xFE, 0xF8, 0xDC)},
    {"txtLifeCnt", "Tahoma", 11.25, true, {}, QColor(0xFE, 0xF8, 0xDC)},
};

} // namespace

using LayoutTest = PanelFixture;

TEST_F(LayoutTest, ControlsStandAtTheirPlacesInTheirStackingOrder)
{
    for (const auto& [containerName, placed] : Containers) {
        QWidget* container = containerName == QLatin1String("Tessaly") ? host.get() : control(QLatin1String(containerName));
        ASSERT_NE(container, nullptr) << containerName;
        const QObjectList stack = container->children(); // bottom first
        qsizetype above = stack.size();
        for (const Placed& p : placed) {
            SCOPED_TRACE(p.name);
            QWidget* widget = control(QLatin1String(p.name));
            ASSERT_NE(widget, nullptr);
            EXPECT_EQ(widget->parentWidget(), container);
            const qsizetype at = stack.indexOf(widget);
            EXPECT_LT(at, above) << "lies over the control listed before it";
            above = at;
            if (p.left >= 0) {
                EXPECT_EQ(widget->geometry(), QRect(ToPixels(p.left), ToPixels(p.top), ToPixels(p.width), ToPixels(p.height)));
            }
        }
    }
}

TEST_F(LayoutTest, ControlsHaveTheirFontsColoursAndAlignment)
{
    for (const Look& look : Looks) {
        SCOPED_TRACE(look.name);
        QWidget* widget = control(QLatin1String(look.name));
        ASSERT_NE(widget, nullptr);
        EXPECT_EQ(widget->font().family(), QString::fromUtf8(look.font));
        EXPECT_EQ(widget->font().pointSizeF(), look.points);
        EXPECT_EQ(widget->font().bold(), look.bold);
        if (look.fore.isValid()) {
            EXPECT_EQ(widget->palette().color(QPalette::WindowText), look.fore);
        }
        if (look.back.isValid()) {
            EXPECT_TRUE(widget->autoFillBackground());
            EXPECT_EQ(widget->palette().color(widget->backgroundRole()), look.back);
        }
    }
    Panel& p = panel();
    for (Label* transparent : {p.lblTitle, p.lblTitleShadow, p.lblModelPortInfo, p.lblDataTitle, p.lblProcess, p.Label1, p.lblPercent})
        EXPECT_FALSE(transparent->autoFillBackground()) << qPrintable(transparent->objectName());
    EXPECT_EQ(p.lblModelPortInfo->alignment() & Qt::AlignHorizontal_Mask, Qt::AlignHCenter);
    EXPECT_EQ(p.lblPercent->alignment() & Qt::AlignHorizontal_Mask, Qt::AlignRight);
    EXPECT_EQ(p.fralabelPercent->BackColor(), QColor(0xD7, 0xD7, 0xD7));
    EXPECT_EQ(p.fraFlexGrid(0)->BackColor(), QColor(0xFF, 0xFF, 0xC0));
    EXPECT_FALSE(p.fraBasicInfo->BackColor().isValid());
    for (TextBox* box : {p.txtESN, p.txtPhoneSWVer, p.txtWarrantyDate, p.txtMEID, p.txtLifeTimer, p.txtLifeCnt})
        EXPECT_TRUE(!box->hasFrame() && !box->isEnabled()) << qPrintable(box->objectName());
    EXPECT_FALSE(p.imgDataBack->isEnabled());
    EXPECT_TRUE(p.imgDataBack->testAttribute(Qt::WA_TransparentForMouseEvents));
}

TEST_F(LayoutTest, FocusChainFollowsTheTabIndexes)
{
    const QStringList expected = {
        "OrvenTreeView1", "picCommand(0)", "txtLifeTimer", "txtLifeCnt", "txtMEID", "picCommand(1)",
        "picCommand(2)", "MSFlexGrid1(0)", "rbMIPProfile(4)", "rbMIPProfile(5)", "rbMIPProfile(3)",
        "rbMIPProfile(2)", "rbMIPProfile(1)", "rbMIPProfile(0)", "cboEditCell(0)", "txtEdit(0)",
        "picCommand(3)", "cmbProfileCount", "txtWarrantyDate", "txtPhoneSWVer", "txtESN",
    };
    QStringList chain;
    QWidget* widget = panel().OrvenTreeView1;
    do {
        if (expected.contains(widget->objectName()))
            chain << widget->objectName();
        widget = widget->nextInFocusChain();
    } while (widget != panel().OrvenTreeView1);
    EXPECT_EQ(chain, expected);
    // Labels, frames and the two bars never take the focus.
    for (const char* name : {"lblTitle", "fraBasicInfo", "pbProgress", "pbProgressBg", "Shape1"})
        EXPECT_EQ(control(QLatin1String(name))->focusPolicy(), Qt::NoFocus) << name;
}
