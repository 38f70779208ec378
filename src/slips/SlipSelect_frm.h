#pragma once
// "納品書選択" / "請求書選択": the company's printed styles; Enter answers the chosen style's
// number, Esc answers -1.
#include <QDialog>
#include "slips/SlipStyles.h"

class QComboBox;

class SlipSelect_frm : public QDialog {
    Q_OBJECT
public:
    explicit SlipSelect_frm(QWidget* parent = nullptr);
    // "Nou" or "Sei". Without its zSysFunc row the window has nothing to ask and closes itself.
    void Init(const QString& which);
    // Shows the window modally; the chosen number, 0 for an empty list, -1 for Esc or no row.
    int choose();
    int answer() const { return answer_; }
    QComboBox* cbox() const { return cbox_; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QComboBox* cbox_ = nullptr;
    bool closed_ = true;
    int answer_ = -1;
};
