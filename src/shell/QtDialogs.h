#pragma once
// The common dialogs on screen: Confirm_frm (Ask), Alert_frm (Tell), Request_frm (Request),
// Message_frm (ShowWait/HideWait) and the error box. Each call builds its form, scales it,
// shows it modal and throws it away, so nothing is kept between calls.
#include <QPointer>
#include "shell/Dialogs.h"

class QWidget;

class QtDialogs : public Dialogs {
public:
    ~QtDialogs() override;
    bool Ask(const QString& message, const QString& yesCaption, const QString& noCaption) override;
    void Tell(const QString& message) override;
    QString Request(const QString& message, const QString& defaultText) override;
    void ShowWait(const QString& message) override;
    void HideWait() override;
    void MessageBox(const QString& title, const QString& text) override;
private:
    QPointer<QWidget> wait_;
};
