#pragma once
// Desktop key codes, as key handlers of the controls and forms receive them.

#include <QKeyEvent>

#include "controls/stringgridmodel.h"

enum VirtualKey : int {
    VK_BACK = 8,
    VK_TAB = 9,
    VK_RETURN = 13,
    VK_SHIFT = 16,
    VK_CONTROL = 17,
    VK_MENU = 18,
    VK_ESCAPE = 27,
    VK_SPACE = 32,
    VK_PRIOR = 33,
    VK_NEXT = 34,
    VK_END = 35,
    VK_HOME = 36,
    VK_LEFT = 37,
    VK_UP = 38,
    VK_RIGHT = 39,
    VK_DOWN = 40,
    VK_INSERT = 45,
    VK_DELETE = 46,
    VK_NUMPAD0 = 96,
    VK_MULTIPLY = 106,
    VK_ADD = 107,
    VK_SUBTRACT = 109,
    VK_DECIMAL = 110,
    VK_DIVIDE = 111,
    VK_F1 = 112,
    VK_OEM_1 = 186,
    VK_OEM_PLUS = 187,
    VK_OEM_COMMA = 188,
    VK_OEM_MINUS = 189,
    VK_OEM_PERIOD = 190,
    VK_OEM_2 = 191,
    VK_OEM_3 = 192,
    VK_OEM_4 = 219,
    VK_OEM_5 = 220,
    VK_OEM_6 = 221,
    VK_OEM_7 = 222,
};

// The desktop key code of a Qt key: digits 48-57, letters 65-90, the
// numeric pad 96-111, the main keyboard's point 190 and minus 189, the
// punctuation keys 186-192 and 219-222 (a shifted character has the code of
// its key); 0 for keys without one. Such a key is still typed: a key
// handler swallows a key by setting a code that was not 0 to 0.
int virtualKeyOf(int qtKey, Qt::KeyboardModifiers modifiers);
inline int virtualKeyOf(const QKeyEvent* e) {
    return virtualKeyOf(e->key(), e->modifiers());
}
ShiftState shiftStateOf(Qt::KeyboardModifiers modifiers);
