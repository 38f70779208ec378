#include "slips/QtSlipScreens.h"

#include <QApplication>
#include <QComboBox>
#include <QFontMetrics>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>

#include "entry/Help_frm.h"
#include "entry/QtListFields.h"
#include "shell/QtMenuRun.h"
#include "shell/QtScreens.h"
#include "shell/Session.h"
#include "shell/main_menu_frm.h"

namespace SlipScreens {

namespace {
Lookup& lookupHook()
{
    static Lookup f;
    return f;
}
PlainQuestion& plainHook()
{
    static PlainQuestion f;
    return f;
}
}  // namespace

void setLookup(Lookup f) { lookupHook() = std::move(f); }

QString runLookup(const SlipLookup& l)
{
    if (lookupHook()) return lookupHook()(l);
    Help_frm* h = HelpForm();
    h->Init(l.table, l.filter1, l.filter2);
    h->exec();
    return h->Hit() ? h->HitCode() : QString();
}

void setPlainQuestion(PlainQuestion f) { plainHook() = std::move(f); }

bool askPlain(const QString& title, const QString& text, bool okCancel)
{
    if (plainHook()) return plainHook()(title, text);
    const auto yes = okCancel ? QMessageBox::Ok : QMessageBox::Yes;
    const auto no = okCancel ? QMessageBox::Cancel : QMessageBox::No;
    return QMessageBox::question(QApplication::activeWindow(), title, text, yes | no) == yes;
}

bool pickIntoList(QComboBox* list, const SlipLookup& lookup, const std::function<void()>& beforePick)
{
    const QString code = runLookup(lookup);
    if (code.isEmpty()) return false;
    if (beforePick) beforePick();
    FindListCode(list, code.toInt());
    return true;
}

std::optional<qint64> listCode(const QComboBox* list)
{
    const std::optional<int> c = ListCode(list);
    return c ? std::optional<qint64>(*c) : std::nullopt;
}

void selectCode(QComboBox* list, const std::optional<qint64>& code)
{
    if (code) FindListCode(list, int(*code));
    else list->setCurrentIndex(-1);
}

void setTextIfChanged(QLineEdit* box, const QString& text)
{
    if (box->text() != text) box->setText(text);
}

QLabel* framed(QWidget* parent, Qt::Alignment align)
{
    auto* l = new QLabel(parent);
    l->setFrameShape(QFrame::Panel);
    l->setFrameShadow(QFrame::Sunken);
    l->setAlignment(align);
    l->setTextFormat(Qt::PlainText);
    return l;
}

QLabel* raised(QWidget* parent, const QString& text)
{
    auto* h = new QLabel(text, parent);
    h->setAlignment(Qt::AlignCenter);
    h->setFrameShape(QFrame::Panel);
    h->setFrameShadow(QFrame::Raised);
    return h;
}

QLabel* addDateRow(QHBoxLayout* row, QWidget* parent, QLineEdit* year, QLineEdit* month, QLineEdit* day)
{
    row->setSpacing(4);
    auto caption = [&](const QString& t) { return new QLabel(t, parent); };
    // With era years the year box holds the Heisei year, so the era is named before it.
    if (session().Hiz == 1) row->addWidget(caption(QStringLiteral("平成")));
    row->addWidget(year);
    row->addWidget(caption(QStringLiteral("年")));
    row->addWidget(month);
    row->addWidget(caption(QStringLiteral("月")));
    row->addWidget(day);
    row->addWidget(caption(QStringLiteral("日")));
    QLabel* weekday = framed(parent, Qt::AlignCenter);
    weekday->setMinimumWidth(QFontMetrics(parent->font()).horizontalAdvance(QLatin1Char('0')) * 6);
    row->addWidget(weekday);
    row->addStretch(1);
    return weekday;
}

void showCaller(QWidget* closing)
{
    if (ProgramEnding()) return;
    QWidget* back = nullptr;
    if (session().SlipCaller == QLatin1String("LstDaichou")) back = ::screen(QStringLiteral("ListDaichou_frm"));
    else back = main_menu_frm::instance();
    if (back && back != closing) {
        back->show();
        back->raise();
        back->activateWindow();
    }
}

}  // namespace SlipScreens
