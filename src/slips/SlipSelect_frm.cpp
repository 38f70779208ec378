#include "slips/SlipSelect_frm.h"

#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QVBoxLayout>

#include "entry/KeyCodes.h"
#include "entry/QtFormBuilder.h"
#include "entry/QtKeys.h"

SlipSelect_frm::SlipSelect_frm(QWidget* parent) : QDialog(parent)
{
    setFont(screenFont());
    auto* v = new QVBoxLayout(this);
    v->setContentsMargins(16, 12, 16, 12);
    v->addWidget(new QLabel(QStringLiteral("印刷する様式を選んでください。"), this));
    cbox_ = new QComboBox(this);
    cbox_->setObjectName(QStringLiteral("cbox"));
    cbox_->setMinimumWidth(QFontMetrics(font()).horizontalAdvance(QLatin1Char('0')) * 30);
    cbox_->installEventFilter(this);
    v->addWidget(cbox_);
    v->addWidget(new QLabel(QStringLiteral("リターンキーで決定、Escで取消"), this));
}

void SlipSelect_frm::Init(const QString& which)
{
    setWindowTitle(slipStyleTitle(which));
    cbox_->clear();
    answer_ = -1;
    const auto styles = loadSlipStyles(which);
    closed_ = !styles.has_value();
    if (closed_) return;
    for (const SlipStyleEntry& e : *styles) cbox_->addItem(e.name, e.value);
    cbox_->setCurrentIndex(cbox_->count() > 0 ? 0 : -1);
}

int SlipSelect_frm::choose()
{
    if (closed_) return -1;
    answer_ = -1;
    cbox_->setFocus();
    exec();
    return answer_;
}

bool SlipSelect_frm::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != cbox_ || event->type() != QEvent::KeyPress) return QDialog::eventFilter(watched, event);
    switch (vbKeyCode(static_cast<QKeyEvent*>(event))) {
    case vbKeyReturn:
        answer_ = cbox_->currentIndex() >= 0 ? cbox_->currentData().toInt() : 0;
        accept();
        return true;
    case vbKeyEscape:
        answer_ = -1;
        reject();
        return true;
    default:
        return QDialog::eventFilter(watched, event);
    }
}
