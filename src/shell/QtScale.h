#pragma once
// The one scaling routine every form goes through before it is shown, and the fonts of the
// application.
class QWidget;

// Multiplies fonts, fixed sizes and the geometry of unmanaged controls by the session's
// ScreenScale (0 is taken as 1), once per form; takes the tab stop off every control so
// that Tab never moves the focus by itself.
void scaleForm(QWidget* form);
// Scales every window of the application on its first show (forms made by the screen
// registry included).
void installFormScaling();
// "ＭＳ 明朝" and "ＭＳ ゴシック" resolve to the fixed-pitch IPA fonts, the "Ｐ" names to
// IPAex; "ＭＳ ゴシック" is the application font.
void installJapaneseFonts();
