#include "controls/vkeys.h"

int virtualKeyOf(int qtKey, Qt::KeyboardModifiers modifiers) {
    const bool keypad = modifiers.testFlag(Qt::KeypadModifier);
    if (qtKey >= Qt::Key_0 && qtKey <= Qt::Key_9)
        return keypad ? VK_NUMPAD0 + (qtKey - Qt::Key_0) : 48 + (qtKey - Qt::Key_0);
    if (qtKey >= Qt::Key_A && qtKey <= Qt::Key_Z) return 65 + (qtKey - Qt::Key_A);
    if (qtKey >= Qt::Key_F1 && qtKey <= Qt::Key_F24) return VK_F1 + (qtKey - Qt::Key_F1);
    switch (qtKey) {
    case Qt::Key_Backspace:
        return VK_BACK;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        return VK_TAB;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return VK_RETURN;
    case Qt::Key_Shift:
        return VK_SHIFT;
    case Qt::Key_Control:
        return VK_CONTROL;
    case Qt::Key_Alt:
        return VK_MENU;
    case Qt::Key_Escape:
        return VK_ESCAPE;
    case Qt::Key_Space:
        return VK_SPACE;
    case Qt::Key_PageUp:
        return VK_PRIOR;
    case Qt::Key_PageDown:
        return VK_NEXT;
    case Qt::Key_End:
        return VK_END;
    case Qt::Key_Home:
        return VK_HOME;
    case Qt::Key_Left:
        return VK_LEFT;
    case Qt::Key_Up:
        return VK_UP;
    case Qt::Key_Right:
        return VK_RIGHT;
    case Qt::Key_Down:
        return VK_DOWN;
    case Qt::Key_Insert:
        return VK_INSERT;
    case Qt::Key_Delete:
        return VK_DELETE;
    case Qt::Key_Period:
        return keypad ? VK_DECIMAL : VK_OEM_PERIOD;
    case Qt::Key_Comma:
        return VK_OEM_COMMA;
    case Qt::Key_Minus:
        return keypad ? VK_SUBTRACT : VK_OEM_MINUS;
    case Qt::Key_Plus:
        return keypad ? VK_ADD : VK_OEM_PLUS;
    case Qt::Key_Asterisk:
        return keypad ? VK_MULTIPLY : 56;
    case Qt::Key_Slash:
        return keypad ? VK_DIVIDE : VK_OEM_2;
    // The shifted characters of the main keyboard come with the code of
    // the key that carries them (the usual desktop layout).
    case Qt::Key_ParenRight:
        return 48;
    case Qt::Key_Exclam:
        return 49;
    case Qt::Key_At:
        return 50;
    case Qt::Key_NumberSign:
        return 51;
    case Qt::Key_Dollar:
        return 52;
    case Qt::Key_Percent:
        return 53;
    case Qt::Key_AsciiCircum:
        return 54;
    case Qt::Key_Ampersand:
        return 55;
    case Qt::Key_ParenLeft:
        return 57;
    case Qt::Key_Semicolon:
    case Qt::Key_Colon:
        return VK_OEM_1;
    case Qt::Key_Equal:
        return VK_OEM_PLUS;
    case Qt::Key_Less:
        return VK_OEM_COMMA;
    case Qt::Key_Greater:
        return VK_OEM_PERIOD;
    case Qt::Key_Underscore:
        return VK_OEM_MINUS;
    case Qt::Key_Question:
        return VK_OEM_2;
    case Qt::Key_QuoteLeft:
    case Qt::Key_AsciiTilde:
        return VK_OEM_3;
    case Qt::Key_BracketLeft:
    case Qt::Key_BraceLeft:
        return VK_OEM_4;
    case Qt::Key_Backslash:
    case Qt::Key_Bar:
    case Qt::Key_yen:
        return VK_OEM_5;
    case Qt::Key_BracketRight:
    case Qt::Key_BraceRight:
        return VK_OEM_6;
    case Qt::Key_Apostrophe:
    case Qt::Key_QuoteDbl:
        return VK_OEM_7;
    default:
        return 0;
    }
}

ShiftState shiftStateOf(Qt::KeyboardModifiers modifiers) {
    ShiftState s = 0;
    if (modifiers.testFlag(Qt::ShiftModifier)) s |= ssShift;
    if (modifiers.testFlag(Qt::AltModifier)) s |= ssAlt;
    if (modifiers.testFlag(Qt::ControlModifier)) s |= ssCtrl;
    return s;
}
