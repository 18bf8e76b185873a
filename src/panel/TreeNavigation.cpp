// The page tree: its nodes, and what a click on a node shows on the right.
#include "panel/Panel.h"

#include "frame/ReportError.h"

#include <tessaly/Tessaly.h>

namespace tessaly {

void Panel::InitTreeCtrl()
{
    OnErrorReport("Common_Function", "InitTreeCtrl", [&] {
        for (const char* node : {"Basic Information", "System NAM1", "System NAM2", "General", "Data",
                                 "MIP Profile", "Feature", "MMS", "SMS/EMS", "WAP", "BREW", "LBS",
                                 "Calibration"})
            OrvenTreeView1->AddRootNode(QLatin1String(node));
        for (int profile = 0; profile <= 5; ++profile)
            OrvenTreeView1->AddChildNode(QStringLiteral("MIP Profile %1").arg(profile),
                                         QStringLiteral("MIP Profile"));
    });
}

void Panel::OrvenTreeView1_Click()
{
    OnErrorReport("Event_Function", "OrvenTreeView1_Click", [&] {
        // Every page goes back to its top left with the first item row current.
        for (int16_t page = 0; page <= g_nLastTab; ++page) {
            fraFlexGrid(page)->setVisible(false);
            MSFlexGrid* grid = MSFlexGrid1(page);
            grid->setVisible(false);
            grid->setLeftCol(0);
            grid->setTopRow(1);
            grid->setCol(0);
            grid->setRow(1);
        }
        fraBasicInfo->setVisible(false);
        fraMIPProfile->setVisible(false);

        const QString text = OrvenTreeView1->SelectedText();
        lblDataTitle->setCaption(text);

        // The node's text alone picks the page; the fixed nodes come first.
        static const struct { const char* node; int16_t page; } FixedPages[] = {
            {"System NAM1", 0}, {"System NAM2", 20}, {"General", 1}, {"Data", 2}, {"Feature", 4},
            {"MMS", 5}, {"SMS/EMS", 6}, {"WAP", 7}, {"BREW", 8}, {"LBS", 12}, {"Calibration", 13},
            {"MIP Profile 0", 14}, {"MIP Profile 1", 15}, {"MIP Profile 2", 16},
            {"MIP Profile 3", 17}, {"MIP Profile 4", 18}, {"MIP Profile 5", 19},
        };
        if (text == QLatin1String("Basic Information")) {
            fraBasicInfo->setVisible(true);
            fraBasicInfo->ZOrder();
        } else if (text == QLatin1String("MIP Profile")) {
            fraMIPProfile->setVisible(true);
            fraMIPProfile->ZOrder();
        } else {
            int16_t page = -1;
            for (const auto& [node, number] : FixedPages) {
                if (text == QLatin1String(node)) {
                    page = number;
                    break;
                }
            }
            if (page == -1)
                page = FindAddedTabByName(text);
            if (page != -1)
                MSFlexGrid1(page)->setAccessibleName(text);
            if (page != -1)
                SetFraFlexGridVisible(page, true);
        }

        if (!Ended())
            UserControl.update(OwnSurface());
    });
}

void Panel::SetFraFlexGridVisible(int16_t page, bool visible)
{
    OnErrorReport("Common_Function", "SetFraFlexGridVisible", [&] {
        fraFlexGrid(page)->setVisible(visible);
        MSFlexGrid1(page)->setVisible(visible);
        cboEditCell(page)->setVisible(false);
        txtEdit(page)->setVisible(false);
        fraFlexGrid(page)->ZOrder();
        MSFlexGrid1(page)->ZOrder();
        cboEditCell(page)->ZOrder();
        txtEdit(page)->ZOrder();
    });
}

} // namespace tessaly
