#pragma once
// Toolkit key events to the key codes and shift bits the entry forms work with.
class QKeyEvent;

// vbKeyOther for keys without a code of their own (text keys the box types itself).
int vbKeyCode(const QKeyEvent* e);
// 1 Shift, 2 Ctrl, 4 Alt; Shift+Tab counts as Shift even where the platform drops the bit.
int vbShift(const QKeyEvent* e);
