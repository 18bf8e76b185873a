// The intrinsic controls of the forms platform, each a standard Qt widget with
// the twips geometry of FormControl: frames, labels, text boxes, combo boxes,
// option buttons and shapes; the picture controls are in Pictures.h.
#pragma once

#include "platform/FormControl.h"

#include <QComboBox>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>

#include <cstdint>

namespace tessaly {

// Sets the colours a control paints with; an invalid colour leaves that role.
void SetControlColors(QWidget& control, const QColor& back, const QColor& fore);

// A container of other controls, without border or caption. Its back colour
// is its own and does not pass to the controls inside it.
class Frame : public FormControl<QFrame> {
    Q_OBJECT
public:
    explicit Frame(QWidget* parent = nullptr);
    void CopyFrom(const Frame& model);
    QColor BackColor() const { return m_backColor; }
    void setBackColor(const QColor& color);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QColor m_backColor;
};

// A caption; transparent over its container unless given a back colour.
// A caption is never cut by the label's edges: one line wider than the label
// is drawn in a smaller size until it fits, and a wrapped caption taller than
// the label shows the whole lines that fit, the last one ending in an
// ellipsis where text was left out.
class Label : public FormControl<QLabel> {
    Q_OBJECT
    Q_PROPERTY(QString Caption READ Caption WRITE setCaption)
public:
    explicit Label(QWidget* parent = nullptr);
    QString Caption() const { return text(); }
    void setCaption(const QString& caption) { setText(caption); }
    void setForeColor(const QColor& color) { SetControlColors(*this, {}, color); }

signals:
    void MouseDown(int Button, int Shift, float X, float Y);
    void MouseMove(int Button, int Shift, float X, float Y);
    void MouseUp(int Button, int Shift, float X, float Y);
    void Click();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
};

// A one-line text box. Its key and focus events are the platform's: KeyDown
// and KeyUp carry virtual-key codes, KeyUp comes once when a key is let go
// (not for the repeats of a held key), and KeyPress comes for each character
// typed, whose code the handler may change, or set to 0 to drop it.
// GotFocus and LostFocus come when the focus moves between controls, not when
// the window around them loses or regains the activation (a modal box opening
// or closing, another application) or a popup menu opens over the box.
class TextBox : public FormControl<QLineEdit> {
    Q_OBJECT
    Q_PROPERTY(QString Text READ Text WRITE setText)
    Q_PROPERTY(int MaxLength READ MaxLength WRITE setMaxLength)
    Q_PROPERTY(int SelStart READ SelStart WRITE setSelStart)
public:
    explicit TextBox(QWidget* parent = nullptr);
    void CopyFrom(const TextBox& model);

    QString Text() const { return text(); }
    // 0 means no limit.
    int MaxLength() const;
    void setMaxLength(int length);
    // The caret's place; setting it selects nothing.
    int SelStart() const { return cursorPosition(); }
    void setSelStart(int position);
    void setForeColor(const QColor& color) { SetControlColors(*this, {}, color); }
    // Draws a one-pixel border of `color` in place of the style's frame,
    // which leaves room for a line of text in a box as low as a grid row.
    void setFlatBorder(const QColor& color);

signals:
    void GotFocus();
    void LostFocus();
    void KeyDown(int KeyCode, int Shift);
    void KeyPress(int16_t& KeyAscii);
    void KeyUp(int KeyCode, int Shift);

protected:
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    static constexpr int NoLimit = 32767; // QLineEdit's own default
    QColor m_flatBorder;
};

// A drop-down list whose text can only be picked, never typed. Click comes
// whenever the chosen item changes, by the user or by setting ListIndex,
// before the change returns; filling and emptying the list raise nothing.
class ComboBox : public FormControl<QComboBox> {
    Q_OBJECT
    Q_PROPERTY(int ListIndex READ ListIndex WRITE setListIndex)
    Q_PROPERTY(QString Text READ Text)
public:
    explicit ComboBox(QWidget* parent = nullptr);
    void CopyFrom(const ComboBox& model);

    // Appends an item; the choice, or the lack of one, stays as it was.
    void AddItem(const QString& item);
    void Clear();
    // Opens the list under the box, as F4 does.
    void DropDown() { showPopup(); }
    int ListCount() const { return count(); }
    // -1 when no item is chosen; a position outside the list is refused.
    int ListIndex() const { return currentIndex(); }
    void setListIndex(int index);
    QString Text() const { return currentText(); }
    void showPopup() override;

signals:
    void Click();

protected:
    void changeEvent(QEvent* event) override;

private:
    bool m_droppedDown = false;
};

class OptionButton : public FormControl<QRadioButton> {
    Q_OBJECT
    Q_PROPERTY(bool Value READ Value WRITE setValue)
public:
    explicit OptionButton(QWidget* parent = nullptr);
    bool Value() const { return isChecked(); }
    void setValue(bool value) { setChecked(value); }
};

// A filled rectangle of the layout; it does nothing.
class Shape : public FormControl<QFrame> {
    Q_OBJECT
public:
    explicit Shape(QWidget* parent = nullptr);
    void setFillColor(const QColor& color) { SetControlColors(*this, color, {}); }
};

} // namespace tessaly
