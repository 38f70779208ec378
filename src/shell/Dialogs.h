#pragma once
// The common dialogs. Forms and core code ask through this interface; the Qt version shows
// modal windows, tests install a scripted one that answers in order and records what was asked.
#include <QString>

class Dialogs {
public:
    virtual ~Dialogs() = default;
    virtual bool Ask(const QString& message, const QString& yesCaption, const QString& noCaption) = 0;
    virtual void Tell(const QString& message) = 0;
    virtual QString Request(const QString& message, const QString& defaultText) = 0;
    virtual void ShowWait(const QString& message) = 0;
    virtual void HideWait() = 0;
    // The system message box with its own title (the store's fatal error box).
    virtual void MessageBox(const QString& title, const QString& text) = 0;
};

// The installed dialogs; never null (a silent default answers "yes" and records nothing).
Dialogs& dialogs();
// Installs `d` (not owned); nullptr restores the default. Returns the previous one.
Dialogs* setDialogs(Dialogs* d);

inline bool Ask(const QString& m, const QString& y, const QString& n) { return dialogs().Ask(m, y, n); }
inline void Tell(const QString& m) { dialogs().Tell(m); }
inline QString Request(const QString& m, const QString& d) { return dialogs().Request(m, d); }
// The notice of a long piece of work; the wait for another station's lock shows over it and
// gives it back.
void ShowWait(const QString& m);
void HideWait();

// The store shows nothing itself: the box of its last failure to open or attach ("エラー",
// "エラー番号 ..."), and what opening did that the clerk must hear of (a repair), are shown here.
void ShowStoreFailure();
void TellStoreNotices();
// From now on a wait for another station's lock shows itself through ShowWait / HideWait.
void showLockWaits();

// After the store has waited out another station's lock: says so and lets the clerk try the
// same save again, so what was typed is not thrown away. True: try again.
inline bool AskRetryLocked(const QString& errorText)
{
    return Ask(errorText + QStringLiteral("\n他の端末が使用中です。もう一度保存しますか？"), QStringLiteral("はい"),
               QStringLiteral("いいえ"));
}
