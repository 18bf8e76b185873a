#include "DemoItems.h"

#include <tessaly/Tessaly.h>

namespace {

struct Item {
    const char* title;
    const char* value;
    const char* format;  // its length is the most characters the value takes
    const char* choices; // "|"-joined, or empty for free text
    bool number;
    bool readOnly;
};

// Writes titles and values into column 1 of a page, one item a row.
template <size_t N>
void FillPage(Tessaly& panel, int16_t page, const Item (&items)[N])
{
    panel.SetNVFieldItemCount(page, int16_t(N));
    for (size_t i = 0; i < N; ++i) {
        const Item& item = items[i];
        const int32_t row = int32_t(i) + 1;
        panel.AddItemToGrid2(page, QString(), item.readOnly, QString(), QLatin1String(item.title), row, 0);
        panel.AddItemToGrd(page, QLatin1String(item.format), item.number, item.readOnly,
                           QLatin1String(item.choices), QLatin1String(item.value), row, 1);
    }
}

const Item Nam[] = {
    {"Mobile Directory Number (MDN)", "8585550143", "##########", "", true, false},
    {"Mobile Station ID (MIN)", "8585550143", "##########", "", true, false},
    {"LOCK CODE", "0143", "####", "", true, false},
    {"Home SID", "4139", "#####", "", true, false},
    {"Home NID", "65535", "#####", "", true, false},
    {"Primary CDMA Channel, A band", "283", "#####", "", true, false},
    {"Secondary CDMA Channel, A band", "691", "#####", "", true, false},
    {"Primary CDMA Channel, B band", "384", "#####", "", true, false},
    {"Secondary CDMA Channel, B band", "777", "#####", "", true, false},
    {"Access Overload Class", "3", "##", "", true, false},
    {"Slot Cycle Index", "2", "", "0|1|2|3|4|5|6|7", false, false},
    {"Preferred Mode", "Automatic", "", "Automatic|CDMA Only|Analog Only", false, false},
    {"ESN", "8F3A21C4", "", "", false, true},
};

const Item General[] = {
    {"Banner", "Halvane", "############", "", false, false},
    {"Auto Answer", "Off", "", "On|Off", false, false},
    {"Key Beep", "On", "", "On|Off", false, false},
    {"Backlight Timeout (s)", "15", "###", "", true, false},
    {"Language", "English", "", "English|Español|한국어", false, false},
    {"Software Version", "HV-2.31.07", "", "", false, true},
};

const Item Data[] = {
    {"Packet Dial String", "#777", "################", "", false, false},
    {"Data Service Option", "33", "##", "", true, false},
    {"Dormancy Timer (s)", "30", "###", "", true, false},
    {"QNC Enabled", "Yes", "", "Yes|No", false, false},
    {"Max Rate", "153.6 kbps", "", "9.6 kbps|14.4 kbps|153.6 kbps", false, true},
};

// A few rows of calibration tables: 40 numeric values each.
void FillCalibration(Tessaly& panel)
{
    const char* tables[] = {"Rx AGC Offset", "Tx Power Limit", "Tx Linearizer", "Thermistor Table",
                            "LNA Rise", "LNA Fall", "PA Range Switch", "HDET Table"};
    panel.SetNVFieldItemCount(13, int16_t(std::size(tables)));
    for (int32_t row = 1; row <= int32_t(std::size(tables)); ++row) {
        panel.AddItemToGrid2(13, QString(), false, QString(), QLatin1String(tables[row - 1]), row, 0);
        for (int32_t col = 1; col <= 40; ++col)
            panel.AddItemToGrd(13, QStringLiteral("#####"), true, false, QString(),
                               QString::number((row * 137 + col * 29) % 512), row, col);
    }
}

} // namespace

void FillDemoItems(Tessaly& panel)
{
    FillPage(panel, 0, Nam);
    FillPage(panel, 20, Nam);
    FillPage(panel, 1, General);
    FillPage(panel, 2, Data);
    FillCalibration(panel);
}
