// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// Tessaly: an embeddable settings panel for CDMA handsets. A host places the
// panel in a window, fills its pages with the handset's NV items through the
// methods below, and reads the values back after the user has edited them.
// The panel has a fixed size of 720 by 562 pixels and draws its own skin.
//
// The methods are also callable by name through Qt's meta-object system,
// with Qt's built-in types and without exceptions: see <tessaly/TessalyByName.h>.
//
// Page numbers: 0 "System NAM1", 1 "General", 2 "Data", 3 the six MIP
// profiles, 4 "Feature", 5 "MMS", 6 "SMS/EMS", 7 "WAP", 8 "BREW", 12 "LBS",
// 13 "Calibration", 14 to 19 the MIP profiles 0 to 5, 20 "System NAM2".
#pragma once

#include <tessaly/BaseModel.h>
#include <tessaly/TessalyByName.h>
#include <tessaly/TessalyError.h>
#include <tessaly/tessaly_export.h>

#include <QString>

#include <cstdint>
#include <memory>

namespace tessaly {
class Panel;
}

class TESSALY_EXPORT Tessaly : public TessalyByName {
    Q_OBJECT

public:
    explicit Tessaly(QWidget* parent = nullptr);
    ~Tessaly() override;

    // Writes a value cell: its text and how the user may edit it. Column 1 is
    // the first value column; for page 3, `col` 1 to 6 are the profiles 0 to 5.
    // FormatType's length is the most characters the value takes; ComboStr
    // lists the choices, joined by "|". An empty FormatType or ComboStr keeps
    // the one stored before.
    void AddItemToGrd(int16_t Part, const QString& FormatType, bool IsNumber, bool ReadOnly,
                                  const QString& ComboStr, const QString& InputStr, int32_t row,
                                  int32_t col);
    // Writes an item title into column 0; `col` must be 0.
    void AddItemToGrid2(int16_t Part, const QString& FormatType, bool ReadOnly,
                                    const QString& ComboStr, const QString& InputStr, int32_t row,
                                    int32_t col);
    // Reads a value cell as it stands; column 0 is the first value column, and
    // for page 3 `col` 0 to 5 are the profiles 0 to 5.
    QString GetItemFromGrd(int16_t Part, int32_t row, int32_t col);
    // Sets a page's number of item rows. Page 3 sets the six profile pages
    // with it, page 0 also page 20. Call it before filling the page.
    void SetNVFieldItemCount(int16_t Part, int16_t count);
    // The grids size themselves by SetNVFieldItemCount: these accept a row
    // count and leave everything as it is.
    void SetGrid1Rows(int16_t Number);
    void SetGrid2Rows(int16_t Number);
    void SetSettingRows(int16_t Number);
    void SetSystemRows(int16_t Number);

    // Adds a page of the host's own behind the others, with a tree node
    // `strTabName` and a grid of `nFlexGridColCount` columns (the title
    // column included), and returns its page number: 21 for the first. It
    // then works as a fixed page: SetNVFieldItemCount, AddItemToGrd, ...
    // Throws TessalyError when the grid refuses the column count.
    int16_t AddTab(const QString& strTabName, int16_t nFlexGridColCount);
    // Takes a fixed page's node out of the tree (its grid and values stay),
    // or removes an added page. Added pages go newest first: any other page
    // above 20 is refused with TessalyError and nothing changes.
    void RemoveTab(int16_t TabNumber);

    // Binds the model of the connected handset, replaces it, or with null
    // drops it; the label above the tree names it and its port. The host
    // keeps owning the model (see BaseModel.h).
    void SetModelDLL(IBaseModel* model);

    // The MIP profiles: how many are in use (1 to 6; 1 until one is set),
    // which one is active (0 to 5), and whether the user may change them.
    // Values out of range are reported and change nothing.
    int16_t GetProfileCount();
    void SetProfileCount(int16_t count);
    int16_t GetActiveProfileIndex();
    void SetActiveProfileIndex(int16_t ActiveIdx);
    void SetActiveProfileEnable(bool bEnable);
    void SetProfileCountEnable(bool bEnable);

    // The six values of the "Basic Information" page, shown as given.
    void SetBasicInfo(const QString& PhoneVersion, const QString& WarrantyDate, const QString& ESN,
                                  const QString& MEID, const QString& LifeTime, const QString& LifeCnt);
    // The panel holds no security values: the setter accepts them and keeps
    // nothing, the getters give "".
    void SetSecurityInfo(const QString& SecCode, bool IsProVersion, const QString& LockCode,
                                     const QString& AKey0, const QString& AKey1, const QString& AkeyChk,
                                     const QString& SsdA0, const QString& SsdA1, const QString& SsdAChk,
                                     const QString& SsdB0, const QString& SsdB1, const QString& SsdBChk,
                                     const QString& count);
    QString GetSecCode();
    QString GetLockCode();
    QString GetAKey(int16_t index);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    friend tessaly::Panel& PanelOf(Tessaly& panel);
    std::unique_ptr<tessaly::Panel> d;
};
