#pragma once
// NumberEdit: the single-line number box on QLineEdit. All of its logic
// (filtering, signs, thousands separators, rounding, limits, arrow steps,
// hexadecimal) is NumberEditCore's; this widget maps the edit primitives
// onto the QLineEdit and routes keys, paste, focus and text changes.
//
//   Value() / setValue(v)    the number; writing shows the formatted text
//   numberText()                   the text in the box (QLineEdit::text())
//   onChange, onKeyPress     as the form's handlers expect them
//
// A conversion error raised while typing or leaving the box goes to
// its onFailure (controlerrors.h); the text stays as it was.

#include "controls/controlerrors.h"
#include "controls/numbereditcore.h"

#include <QLineEdit>

class QAction;
class QMenu;

class NumberEdit : public QLineEdit, public NumberEditCore {
    Q_OBJECT
public:
    explicit NumberEdit(QWidget* parent = nullptr);
    ~NumberEdit() override;

    // Gets the failures of the box's event handling.
    FailureHandler onFailure;

    QString numberText() const override { return QLineEdit::text(); }
    void setNumberText(const QString& value) override;
    int selStart() const override;
    int selLength() const override;
    void setSelStart(int value) override;
    void setSelLength(int value) override;
    bool ctrlDown() const override;
    void setEdited(bool value) override;

    // Pastes the clipboard's text through the paste filter.
    void pasteFromClipboard();
    // The paste entry of a standard edit menu (by its name or its shortcut).
    static QAction* findPasteAction(QMenu* menu);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    // The middle button's paste of the selection goes through the filter.
    void mouseReleaseEvent(QMouseEvent* event) override;
    void invalidate() override { update(); }
    void alignmentChanged() override;

private:
    void textChangedByBox();
    bool m_ctrlFromEvent = false;
};
