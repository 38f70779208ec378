#pragma once
// Key codes as the entry forms see them. A form's key handler may change the code before the
// controller handles it (a lookup ends by turning F6 into Enter), so forms and controller
// speak in these numbers, not in toolkit keys.
enum KeyCode : int {
    vbKeyNone = 0,
    vbKeyBack = 8,
    vbKeyTab = 9,
    vbKeyReturn = 13,
    vbKeyEscape = 27,
    vbKeySpace = 32,
    vbKeyPageUp = 33,
    vbKeyPageDown = 34,
    vbKeyEnd = 35,
    vbKeyHome = 36,
    vbKeyLeft = 37,
    vbKeyUp = 38,
    vbKeyRight = 39,
    vbKeyDown = 40,
    vbKeyInsert = 45,
    vbKeyDelete = 46,
    vbKey0 = 48,          // main keyboard digits 48..57
    vbKeyA = 65,          // letters 65..90
    vbKeyNumpad0 = 96,    // numeric keypad digits 96..105
    vbKeyNumpad9 = 105,
    vbKeyF1 = 112,
    vbKeyF2 = 113,
    vbKeyF3 = 114,
    vbKeyF4 = 115,
    vbKeyF5 = 116,
    vbKeyF6 = 117,
    vbKeyF7 = 118,
    vbKeyF8 = 119,
    vbKeyF9 = 120,
    vbKeyF10 = 121,
    vbKeyF11 = 122,
    vbKeyF12 = 123,
    vbKeyOther = 1000     // any key without a code of its own
};

// Shift argument of the key handlers: a sum of these bits.
enum ShiftMask : int { vbShiftMask = 1, vbCtrlMask = 2, vbAltMask = 4 };
