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
};

class TextBox : public FormControl<QLineEdit> {
    Q_OBJECT
    Q_PROPERTY(QString Text READ Text WRITE setText)
    Q_PROPERTY(int MaxLength READ MaxLength WRITE setMaxLength)
public:
    explicit TextBox(QWidget* parent = nullptr);
    void CopyFrom(const TextBox& model);

    QString Text() const { return text(); }
    // 0 means no limit.
    int MaxLength() const;
    void setMaxLength(int length);
    void setForeColor(const QColor& color) { SetControlColors(*this, {}, color); }

private:
    static constexpr int NoLimit = 32767; // QLineEdit's own default
};

// A drop-down list whose text can only be picked, never typed.
class ComboBox : public FormControl<QComboBox> {
    Q_OBJECT
    Q_PROPERTY(int ListIndex READ ListIndex WRITE setListIndex)
    Q_PROPERTY(QString Text READ Text)
public:
    explicit ComboBox(QWidget* parent = nullptr);
    void CopyFrom(const ComboBox& model);

    // Appends an item; the choice, or the lack of one, stays as it was.
    void AddItem(const QString& item);
    void Clear() { clear(); }
    int ListCount() const { return count(); }
    // -1 when no item is chosen; a position outside the list is refused.
    int ListIndex() const { return currentIndex(); }
    void setListIndex(int index);
    QString Text() const { return currentText(); }
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
