#include "entry/QtKeys.h"

#include <QKeyEvent>
#include "entry/KeyCodes.h"

int vbKeyCode(const QKeyEvent* e)
{
    const int k = e->key();
    if (k >= Qt::Key_0 && k <= Qt::Key_9)
        return (e->modifiers() & Qt::KeypadModifier ? vbKeyNumpad0 : vbKey0) + (k - Qt::Key_0);
    if (k >= Qt::Key_A && k <= Qt::Key_Z) return vbKeyA + (k - Qt::Key_A);
    if (k >= Qt::Key_F1 && k <= Qt::Key_F12) return vbKeyF1 + (k - Qt::Key_F1);
    switch (k) {
    case Qt::Key_Return:
    case Qt::Key_Enter: return vbKeyReturn;
    case Qt::Key_Tab:
    case Qt::Key_Backtab: return vbKeyTab;
    case Qt::Key_Escape: return vbKeyEscape;
    case Qt::Key_Backspace: return vbKeyBack;
    case Qt::Key_Space: return vbKeySpace;
    case Qt::Key_PageUp: return vbKeyPageUp;
    case Qt::Key_PageDown: return vbKeyPageDown;
    case Qt::Key_End: return vbKeyEnd;
    case Qt::Key_Home: return vbKeyHome;
    case Qt::Key_Left: return vbKeyLeft;
    case Qt::Key_Up: return vbKeyUp;
    case Qt::Key_Right: return vbKeyRight;
    case Qt::Key_Down: return vbKeyDown;
    case Qt::Key_Insert: return vbKeyInsert;
    case Qt::Key_Delete: return vbKeyDelete;
    default: return vbKeyOther;
    }
}

int vbShift(const QKeyEvent* e)
{
    const Qt::KeyboardModifiers m = e->modifiers();
    int s = 0;
    if (m & Qt::ShiftModifier || e->key() == Qt::Key_Backtab) s |= vbShiftMask;
    if (m & Qt::ControlModifier) s |= vbCtrlMask;
    if (m & Qt::AltModifier) s |= vbAltMask;
    return s;
}
