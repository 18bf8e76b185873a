#include "platform/Controls.h"

#include "platform/Accessibility.h"
#include "platform/MouseEvents.h"
#include "platform/PixelFrame.h"
#include "platform/VirtualKey.h"

#include <QPaintEvent>
#include <QPainter>

namespace tessaly {

void SetControlColors(QWidget& control, const QColor& back, const QColor& fore)
{
    QPalette palette = control.palette();
    if (back.isValid()) {
        palette.setColor(QPalette::Window, back);
        palette.setColor(QPalette::Base, back);
        palette.setColor(QPalette::Button, back);
        control.setAutoFillBackground(true);
    }
    if (fore.isValid()) {
        palette.setColor(QPalette::WindowText, fore);
        palette.setColor(QPalette::Text, fore);
        palette.setColor(QPalette::ButtonText, fore);
    }
    control.setPalette(palette);
}

// Copies what a loaded array element takes over from its model.
template <class Control>
static void CopyCommon(Control& element, const Control& model)
{
    element.setGeometry(model.geometry());
    element.setFont(model.font());
    element.setPalette(model.palette());
    element.setAutoFillBackground(model.autoFillBackground());
    element.setEnabled(model.Enabled());
}

Frame::Frame(QWidget* parent)
    : FormControl(parent)
{
    setFrameShape(QFrame::NoFrame);
    InstallAccessibleInterfaces();
}

void Frame::CopyFrom(const Frame& model)
{
    CopyCommon(*this, model);
    setBackColor(model.m_backColor);
}

void Frame::setBackColor(const QColor& color)
{
    m_backColor = color;
    // A frame with a colour covers its container there: nothing beneath it
    // needs painting.
    setAttribute(Qt::WA_OpaquePaintEvent, color.isValid());
    update();
}

void Frame::paintEvent(QPaintEvent* event)
{
    if (m_backColor.isValid())
        QPainter(this).fillRect(event->rect(), m_backColor);
}

Label::Label(QWidget* parent)
    : FormControl(parent)
{
    setAttribute(Qt::WA_TranslucentBackground);
    setAlignment(Qt::AlignLeft | Qt::AlignTop);
    setMouseTracking(true);
}

void Label::mousePressEvent(QMouseEvent* event) { RaiseMouseEvent(*this, event); }
void Label::mouseMoveEvent(QMouseEvent* event) { RaiseMouseEvent(*this, event); }
void Label::mouseReleaseEvent(QMouseEvent* event) { RaiseMouseEvent(*this, event); }

TextBox::TextBox(QWidget* parent)
    : FormControl(parent)
{
}

void TextBox::CopyFrom(const TextBox& model)
{
    CopyCommon(*this, model);
    setText(model.text());
    setMaxLength(model.MaxLength());
    setFrame(model.hasFrame());
    setReadOnly(model.isReadOnly());
    setAlignment(model.alignment());
    if (model.m_flatBorder.isValid())
        setFlatBorder(model.m_flatBorder);
}

int TextBox::MaxLength() const
{
    return maxLength() >= NoLimit ? 0 : maxLength();
}

void TextBox::setMaxLength(int length)
{
    if (length < 0)
        Raise(errInvalidPropertyValue, QStringLiteral("Invalid property value"));
    QLineEdit::setMaxLength(length == 0 ? NoLimit : length);
}

void TextBox::setFlatBorder(const QColor& color)
{
    m_flatBorder = color;
    setFrame(false);
    setTextMargins(2, 1, 2, 1);
}

void TextBox::paintEvent(QPaintEvent* event)
{
    QLineEdit::paintEvent(event);
    if (m_flatBorder.isValid()) {
        QPainter painter(this);
        FillFrame(painter, rect(), m_flatBorder);
    }
}

void TextBox::setSelStart(int position)
{
    if (position < 0)
        Raise(errInvalidPropertyValue, QStringLiteral("Invalid property value"));
    setCursorPosition(position);
}

// Focus that comes and goes with the window's activation or a popup is no
// move between controls.
static bool MovesBetweenControls(const QFocusEvent& event)
{
    return event.reason() != Qt::ActiveWindowFocusReason && event.reason() != Qt::PopupFocusReason;
}

void TextBox::focusInEvent(QFocusEvent* event)
{
    QLineEdit::focusInEvent(event);
    if (MovesBetweenControls(*event))
        emit GotFocus();
}

void TextBox::focusOutEvent(QFocusEvent* event)
{
    QLineEdit::focusOutEvent(event);
    if (MovesBetweenControls(*event))
        emit LostFocus();
}

// The character code a key makes, 0 for none: its text, or for Ctrl with a
// letter the control character (Ctrl+C is 3, Ctrl+V 22, Ctrl+X 24).
static int CharacterCode(const QKeyEvent& event)
{
    const int key = event.key();
    if ((event.modifiers() & Qt::ControlModifier) && key >= Qt::Key_A && key <= Qt::Key_Z)
        return key - Qt::Key_A + 1;
    const QString text = event.text();
    return text.isEmpty() || text.front().unicode() == 127 ? 0 : text.front().unicode();
}

void TextBox::keyPressEvent(QKeyEvent* event)
{
    emit KeyDown(VirtualKeyCode(*event), ShiftState(event->modifiers()));
    const int code = CharacterCode(*event);
    if (code == 0) {
        QLineEdit::keyPressEvent(event);
        return;
    }
    int16_t KeyAscii = int16_t(code); // the platform's 16-bit character code
    emit KeyPress(KeyAscii);
    if (KeyAscii == 0) {
        event->accept(); // dropped: neither typed nor acted on
        return;
    }
    if (KeyAscii == int16_t(code)) {
        QLineEdit::keyPressEvent(event);
        return;
    }
    QKeyEvent changed(event->type(), event->key(), event->modifiers() & ~Qt::ControlModifier,
                      QString(QChar(char16_t(uint16_t(KeyAscii)))), event->isAutoRepeat());
    QLineEdit::keyPressEvent(&changed);
    event->setAccepted(changed.isAccepted());
}

void TextBox::keyReleaseEvent(QKeyEvent* event)
{
    QLineEdit::keyReleaseEvent(event);
    if (!event->isAutoRepeat())
        emit KeyUp(VirtualKeyCode(*event), ShiftState(event->modifiers()));
}

ComboBox::ComboBox(QWidget* parent)
    : FormControl(parent)
{
    setEditable(false);
    connect(this, &QComboBox::currentIndexChanged, this, &ComboBox::Click);
}

// Qt makes a list's drop-down at its first change of font, which costs more
// than the rest of the box; a list that has not dropped down yet takes its
// font when it first does.
void ComboBox::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::FontChange && !m_droppedDown)
        QWidget::changeEvent(event);
    else
        QComboBox::changeEvent(event);
}

void ComboBox::showPopup()
{
    if (!m_droppedDown) {
        m_droppedDown = true;
        QEvent fontChange(QEvent::FontChange);
        QComboBox::changeEvent(&fontChange);
    }
    QComboBox::showPopup();
}

void ComboBox::Clear()
{
    const QSignalBlocker quiet(this);
    clear();
}

void ComboBox::CopyFrom(const ComboBox& model)
{
    CopyCommon(*this, model);
    for (int i = 0; i < model.count(); ++i)
        AddItem(model.itemText(i));
}

void ComboBox::AddItem(const QString& item)
{
    const QSignalBlocker quiet(this);
    const int chosen = currentIndex();
    addItem(item);
    setCurrentIndex(chosen);
}

void ComboBox::setListIndex(int index)
{
    if (index < -1 || index >= count())
        Raise(errInvalidPropertyValue, QStringLiteral("Invalid property value"));
    setCurrentIndex(index);
}

OptionButton::OptionButton(QWidget* parent)
    : FormControl(parent)
{
}

Shape::Shape(QWidget* parent)
    : FormControl(parent)
{
    setFrameShape(QFrame::NoFrame);
}

} // namespace tessaly
