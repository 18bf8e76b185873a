// Pages of the host's own behind page 20, and taking a page's node out of the
// tree. Both report a failure to the host as the call's failure.
#include "panel/Panel.h"

#include "platform/Numeric.h"

#include <tessaly/Tessaly.h>

TessalyError::TessalyError(int32_t number, const QString& description)
    : std::runtime_error(description.toStdString())
    , m_number(number)
    , m_description(description)
{
}

namespace tessaly {

namespace {

// Runs `body`, handing a run-time error to the host as the public error.
template <class Body>
auto ReportToHost(Body&& body)
{
    try {
        return body();
    } catch (const RuntimeError& error) {
        throw TessalyError(error.number(), error.description());
    }
}

} // namespace

int16_t Panel::AddTab(const QString& strTabName, int16_t nFlexGridColCount)
{
    return ReportToHost([&] {
        OrvenTreeView1->AddRootNode(strTabName);
        const int spare = g_arrAddedTab.UBound();
        g_nLastTab = ToInt16(int64_t(g_nLastTab) + 1);
        LoadTabControls(g_nLastTab);
        MSFlexGrid1(g_nLastTab)->setCols(nFlexGridColCount);
        g_arrAddedTab.ReDimPreserve(spare + 1);
        g_arrAddedTab(spare) = {g_nLastTab, strTabName};
        SetFlexGridTitle(g_nLastTab, 1, ToInt16(nFlexGridColCount - 1));
        InitFlexGrid(g_nLastTab);
        MSFlexGrid* grid = MSFlexGrid1(g_nLastTab);
        grid->setColWidth(0, 3500);
        for (int col = 1; col <= nFlexGridColCount - 1; ++col)
            grid->setColWidth(col, 2800);
        // Every page has the records of the widest fixed page, whatever its width.
        g_arrCellAttr.ReDimKeep(g_nLastTab, ToInt16((g_nMaxGridCols + 1) * g_nMaxGridRows));
        return g_nLastTab;
    });
}

void Panel::RemoveTab(int16_t TabNumber)
{
    ReportToHost([&] {
        // Pages are removed newest first: the page loops need every number up to
        // g_nLastTab. Any other page above 20 is refused before anything changes.
        if (TabNumber > 20) {
            int16_t index = -1;
            FindAddedTabByNumber(TabNumber, index);
            if (TabNumber != g_nLastTab || index < 0)
                Raise(errInvalidProcedureCall,
                      QStringLiteral("Page %1 is not the newest added page; remove added pages newest first").arg(TabNumber));
        }
        static const char* const FixedNodes[] = {
            "System NAM1", "General", "Data", "MIP Profile", "Feature", "MMS", "SMS/EMS", "WAP", "BREW", nullptr,
            nullptr, nullptr, "LBS", "Calibration", "MIP Profile 0", "MIP Profile 1", "MIP Profile 2",
            "MIP Profile 3", "MIP Profile 4", "MIP Profile 5", "System NAM2",
        };
        if (TabNumber >= 0 && TabNumber <= 20) {
            if (const char* node = FixedNodes[TabNumber])
                OrvenTreeView1->RemoveNode(QLatin1String(node));
        } else {
            int16_t index = 0;
            const QString name = FindAddedTabByNumber(TabNumber, index);
            if (!name.isEmpty()) {
                OrvenTreeView1->RemoveNode(name);
                g_arrAddedTab(index) = {-1, QString()};
            }
        }
        if (TabNumber > 20) {
            g_nLastTab = ToInt16(g_nLastTab - 1);
            UnloadTabControls(TabNumber);
        }
    });
}

} // namespace tessaly
