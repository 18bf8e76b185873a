// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

/**
 * \file Tessaly.h
 * \brief The panel, Tessaly: the widget a host places in its window.
 */
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

/**
 * \brief Tessaly: an embeddable settings panel for CDMA handsets.
 *
 * A host places the panel in a window, fills its pages with the handset's NV
 * items through the methods below, and reads the values back after the user
 * has edited them. The panel has a fixed size of 720 by 562 pixels and draws
 * its own skin.
 *
 * \snippet host.cpp panel
 *
 * The methods are also callable by name through Qt's meta-object system,
 * with Qt's built-in types and without exceptions: see TessalyByName.
 *
 * Page numbers (`Part`): 0 "System NAM1", 1 "General", 2 "Data", 3 the six
 * MIP profiles, 4 "Feature", 5 "MMS", 6 "SMS/EMS", 7 "WAP", 8 "BREW",
 * 12 "LBS", 13 "Calibration", 14 to 19 the MIP profiles 0 to 5, 20 "System
 * NAM2"; 9 to 11 are pages without a node in the tree. Pages the host adds
 * with AddTab are numbered from 21 on. On every page row 0 holds the column
 * titles and column 0 the item titles; items are rows 1 and on.
 *
 * A method that cannot do what is asked with a page, a column or a value
 * tells the user, in the panel's message box ("Bad Tab Index.. In
 * AddItemToGrd()") or in its error report, and returns; only AddTab and
 * RemoveTab throw.
 */
class TESSALY_EXPORT Tessaly : public TessalyByName {
    Q_OBJECT

public:
    /**
     * \brief Makes the panel, with its pages empty, "Basic Information" on
     * view and no model bound.
     * \param parent The widget the panel is placed in; none (the default)
     *        makes it a window of its own.
     */
    explicit Tessaly(QWidget* parent = nullptr);
    /**
     * \brief Ends the panel. When one of its message boxes is open, what the
     * box's handler works on lives on, hidden, until the box has closed.
     */
    ~Tessaly() override;

    /**
     * \brief Writes a value cell: its text and how the user may edit it.
     *
     * Column 1 is the first value column; for page 3, `col` 1 to 6 are the
     * profiles 0 to 5, and the values written for profile 0 are also written
     * to the profiles beyond the current profile count. A page that does not
     * exist or a column beyond the page's grid is told to the user and
     * nothing is written.
     * \param Part The page number.
     * \param FormatType A pattern whose length is the most characters the
     *        value takes ("#####": 5); empty keeps the one stored before.
     * \param IsNumber True when the cell takes digits only.
     * \param ReadOnly True when the user may not edit the cell; it is drawn
     *        grey.
     * \param ComboStr The choices of a list cell, joined by "|"; empty keeps
     *        the ones stored before (none: a text cell).
     * \param InputStr The value shown.
     * \param row The item's row, 1 for the first.
     * \param col The value column, 1 for the first.
     */
    void AddItemToGrd(int16_t Part, const QString& FormatType, bool IsNumber, bool ReadOnly,
                                  const QString& ComboStr, const QString& InputStr, int32_t row,
                                  int32_t col);
    /**
     * \brief Writes an item title into column 0.
     *
     * On page 3 the title goes to all six profile pages. An item titled "LOCK
     * CODE" takes the last four digits of the phone number whenever the user
     * types in it (column 1 of "Mobile Directory Number (MDN)").
     * \param Part The page number.
     * \param FormatType Not used.
     * \param ReadOnly Not used: titles are never edited.
     * \param ComboStr Not used.
     * \param InputStr The item's title.
     * \param row The item's row, 1 for the first.
     * \param col Must be 0; any other column is told to the user and nothing
     *        is written.
     */
    void AddItemToGrid2(int16_t Part, const QString& FormatType, bool ReadOnly,
                                    const QString& ComboStr, const QString& InputStr, int32_t row,
                                    int32_t col);
    /**
     * \brief Reads a value cell as it stands, with what the user has typed.
     * \param Part The page number.
     * \param row The item's row, 1 for the first.
     * \param col The value column, 0 for the first (one less than
     *        AddItemToGrd's); for page 3 `col` 0 to 5 are the profiles 0 to
     *        5.
     * \return The cell's text; "" when the page or column does not exist,
     *         which is told to the user.
     */
    QString GetItemFromGrd(int16_t Part, int32_t row, int32_t col);
    /**
     * \brief Sets a page's number of item rows.
     *
     * Page 3 sets the six profile pages with it, page 0 also page 20. Call it
     * before filling the page.
     * \param Part The page number.
     * \param count The number of items; the grid gets one row more, for the
     *        column titles.
     */
    void SetNVFieldItemCount(int16_t Part, int16_t count);
    /**
     * \brief Accepts a row count and leaves everything as it is: the grids
     * size themselves by SetNVFieldItemCount.
     * \param Number Not used.
     */
    void SetGrid1Rows(int16_t Number);
    /// \copydoc SetGrid1Rows
    void SetGrid2Rows(int16_t Number);
    /// \copydoc SetGrid1Rows
    void SetSettingRows(int16_t Number);
    /// \copydoc SetGrid1Rows
    void SetSystemRows(int16_t Number);

    /**
     * \brief Adds a page of the host's own behind the others.
     *
     * The page gets a tree node and a grid whose value columns are titled
     * "VALUE1", "VALUE2", ... ("VALUE" alone on a grid of two columns). It
     * then works as a fixed page: SetNVFieldItemCount, AddItemToGrd, ...
     * \param strTabName The tree node's text.
     * \param nFlexGridColCount The grid's number of columns, the title column
     *        included.
     * \return The new page's number: 21 for the first, one more for each
     *         page added since; a number freed by RemoveTab is given again.
     * \throws TessalyError 380 when the grid refuses the column count (below
     *         1).
     */
    int16_t AddTab(const QString& strTabName, int16_t nFlexGridColCount);
    /**
     * \brief Takes a fixed page's node out of the tree, or removes an added
     * page.
     *
     * A fixed page (0 to 20) keeps its grid and values, and a number without
     * a page below 21 changes nothing. Added pages go newest first: the
     * newest added page loses its node, grid and values.
     * \param TabNumber The page number.
     * \throws TessalyError 5 for any other page above 20 (not the newest,
     *         or removed already); nothing changes then.
     */
    void RemoveTab(int16_t TabNumber);

    /**
     * \brief Binds the model of the connected handset, replaces it, or with
     * null drops it.
     *
     * The label above the tree names the model and its port ("SIM-800
     * (COM7)", from IBaseModel::GetModelName and IBaseModel::GetPortNumber,
     * which are called here), or reads "No Phone" without one. The panel
     * takes the model's progress events from now on, and the command bar
     * calls its commands; a command clicked without a model tells the user
     * "There is no selected model". The host keeps owning the model.
     * \param model The model, or null.
     */
    void SetModelDLL(IBaseModel* model);

    /**
     * \brief How many MIP profiles are in use.
     * \return 1 to 6; 1 until one is set.
     */
    int16_t GetProfileCount();
    /**
     * \brief Sets how many MIP profiles are in use: the profile count list
     * shows it, the profiles beyond it are disabled and leave the tree, and
     * an active profile beyond it gives way to profile 0.
     * \param count 1 to 6; a value out of range is reported in the panel's
     *        error report and changes nothing.
     */
    void SetProfileCount(int16_t count);
    /**
     * \brief Which MIP profile is active.
     * \return 0 to 5: the selected profile among those in use. When none of
     *         them is selected, profile 0 is selected and 0 returned.
     */
    int16_t GetActiveProfileIndex();
    /**
     * \brief Selects the active MIP profile.
     * \param ActiveIdx 0 to 5; a value out of range is reported in the
     *        panel's error report and changes nothing. A profile beyond the
     *        profile count is selected but does not count as active.
     */
    void SetActiveProfileIndex(int16_t ActiveIdx);
    /**
     * \brief Lets the user choose the active profile, or not.
     * \param bEnable True enables the six profile buttons, false disables
     *        them; all are enabled at first.
     */
    void SetActiveProfileEnable(bool bEnable);
    /**
     * \brief Lets the user change the profile count, or not.
     * \param bEnable True enables the profile count list, false disables it;
     *        it is enabled at first.
     */
    void SetProfileCountEnable(bool bEnable);

    /**
     * \brief Shows the six values of the "Basic Information" page, as given.
     *
     * They are drawn in bold until the first call, in regular weight from
     * then on.
     * \param PhoneVersion The phone's software version.
     * \param WarrantyDate The warranty date.
     * \param ESN The electronic serial number.
     * \param MEID The mobile equipment identifier.
     * \param LifeTime The life timer.
     * \param LifeCnt The life count.
     */
    void SetBasicInfo(const QString& PhoneVersion, const QString& WarrantyDate, const QString& ESN,
                                  const QString& MEID, const QString& LifeTime, const QString& LifeCnt);
    /**
     * \brief Accepts the security values and keeps nothing: the panel holds
     * no security values.
     * \param SecCode Not kept.
     * \param IsProVersion Not kept.
     * \param LockCode Not kept.
     * \param AKey0 Not kept.
     * \param AKey1 Not kept.
     * \param AkeyChk Not kept.
     * \param SsdA0 Not kept.
     * \param SsdA1 Not kept.
     * \param SsdAChk Not kept.
     * \param SsdB0 Not kept.
     * \param SsdB1 Not kept.
     * \param SsdBChk Not kept.
     * \param count Not kept.
     */
    void SetSecurityInfo(const QString& SecCode, bool IsProVersion, const QString& LockCode,
                                     const QString& AKey0, const QString& AKey1, const QString& AkeyChk,
                                     const QString& SsdA0, const QString& SsdA1, const QString& SsdAChk,
                                     const QString& SsdB0, const QString& SsdB1, const QString& SsdBChk,
                                     const QString& count);
    /**
     * \brief The security code, which the panel does not hold.
     * \return Always "".
     */
    QString GetSecCode();
    /**
     * \brief The lock code, which the panel does not hold.
     * \return Always "".
     */
    QString GetLockCode();
    /**
     * \brief An A-key, which the panel does not hold.
     * \param index Which A-key; not used.
     * \return Always "".
     */
    QString GetAKey(int16_t index);

protected:
    /**
     * \brief Draws the panel's background, then its progress bar as it
     * stands.
     * \param event The area to paint.
     */
    void paintEvent(QPaintEvent* event) override;

private:
    friend tessaly::Panel& PanelOf(Tessaly& panel);
    std::unique_ptr<tessaly::Panel> d;
};
