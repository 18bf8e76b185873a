// Tessaly: an embeddable settings panel for CDMA handsets. A host places the
// panel in a window, fills its pages with the handset's NV items through the
// methods below, and reads the values back after the user has edited them.
// The panel has a fixed size of 720 by 562 pixels and draws its own skin.
//
// The methods are also callable by name through Qt's meta-object system.
// Page numbers: 0 "System NAM1", 1 "General", 2 "Data", 3 the six MIP
// profiles, 4 "Feature", 5 "MMS", 6 "SMS/EMS", 7 "WAP", 8 "BREW", 12 "LBS",
// 13 "Calibration", 14 to 19 the MIP profiles 0 to 5, 20 "System NAM2".
#pragma once

#include <tessaly/BaseModel.h>
#include <tessaly/TessalyError.h>
#include <tessaly/tessaly_export.h>

#include <QString>
#include <QWidget>

#include <cstdint>
#include <memory>

namespace tessaly {
class Panel;
}

class TESSALY_EXPORT Tessaly : public QWidget {
    Q_OBJECT

public:
    explicit Tessaly(QWidget* parent = nullptr);
    ~Tessaly() override;

    // Writes a value cell: its text and how the user may edit it. Column 1 is
    // the first value column; for page 3, `col` 1 to 6 are the profiles 0 to 5.
    // FormatType's length is the most characters the value takes; ComboStr
    // lists the choices, joined by "|". An empty FormatType or ComboStr keeps
    // the one stored before.
    Q_INVOKABLE void AddItemToGrd(int16_t Part, const QString& FormatType, bool IsNumber, bool ReadOnly,
                                  const QString& ComboStr, const QString& InputStr, int32_t row,
                                  int32_t col);
    // Writes an item title into column 0; `col` must be 0.
    Q_INVOKABLE void AddItemToGrid2(int16_t Part, const QString& FormatType, bool ReadOnly,
                                    const QString& ComboStr, const QString& InputStr, int32_t row,
                                    int32_t col);
    // Reads a value cell as it stands; column 0 is the first value column, and
    // for page 3 `col` 0 to 5 are the profiles 0 to 5.
    Q_INVOKABLE QString GetItemFromGrd(int16_t Part, int32_t row, int32_t col);
    // Sets a page's number of item rows. Page 3 sets the six profile pages
    // with it, page 0 also page 20. Call it before filling the page.
    Q_INVOKABLE void SetNVFieldItemCount(int16_t Part, int16_t count);
    // Kept for hosts written against earlier panels; they have no effect.
    Q_INVOKABLE void SetGrid1Rows(int16_t Number);
    Q_INVOKABLE void SetGrid2Rows(int16_t Number);
    Q_INVOKABLE void SetSettingRows(int16_t Number);
    Q_INVOKABLE void SetSystemRows(int16_t Number);

    // Adds a page of the host's own behind the others, with a tree node
    // `strTabName` and a grid of `nFlexGridColCount` columns (the title
    // column included), and returns its page number: 21 for the first. It
    // then works as a fixed page: SetNVFieldItemCount, AddItemToGrd, ...
    // Throws TessalyError when the grid refuses the column count.
    Q_INVOKABLE int16_t AddTab(const QString& strTabName, int16_t nFlexGridColCount);
    // Takes a fixed page's node out of the tree (its grid and values stay),
    // or removes an added page. Added pages go newest first: any other page
    // above 20 is refused with TessalyError and nothing changes.
    Q_INVOKABLE void RemoveTab(int16_t TabNumber);

    // Binds the model of the connected handset, replaces it, or with null
    // drops it; the label above the tree names it and its port. The host
    // keeps owning the model (see BaseModel.h).
    Q_INVOKABLE void SetModelDLL(IBaseModel* model);

    // The MIP profiles: how many are in use (1 to 6; 1 until one is set),
    // which one is active (0 to 5), and whether the user may change them.
    // Values out of range are reported and change nothing.
    Q_INVOKABLE int16_t GetProfileCount();
    Q_INVOKABLE void SetProfileCount(int16_t count);
    Q_INVOKABLE int16_t GetActiveProfileIndex();
    Q_INVOKABLE void SetActiveProfileIndex(int16_t ActiveIdx);
    Q_INVOKABLE void SetActiveProfileEnable(bool bEnable);
    Q_INVOKABLE void SetProfileCountEnable(bool bEnable);

    // The six values of the "Basic Information" page, shown as given.
    Q_INVOKABLE void SetBasicInfo(const QString& PhoneVersion, const QString& WarrantyDate, const QString& ESN,
                                  const QString& MEID, const QString& LifeTime, const QString& LifeCnt);
    // Kept for hosts written against earlier panels: the panel holds no
    // security values; the setter accepts them, the getters give "".
    Q_INVOKABLE void SetSecurityInfo(const QString& SecCode, bool IsProVersion, const QString& LockCode,
                                     const QString& AKey0, const QString& AKey1, const QString& AkeyChk,
                                     const QString& SsdA0, const QString& SsdA1, const QString& SsdAChk,
                                     const QString& SsdB0, const QString& SsdB1, const QString& SsdBChk,
                                     const QString& count);
    Q_INVOKABLE QString GetSecCode();
    Q_INVOKABLE QString GetLockCode();
    Q_INVOKABLE QString GetAKey(int16_t index);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    friend tessaly::Panel& PanelOf(Tessaly& panel);
    std::unique_ptr<tessaly::Panel> d;
};
