#include "reports/Daichou_frm.h"
#include <QComboBox>
#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include "entry/ChoiceLists.h"
#include "entry/Help_frm.h"
#include "entry/QtChoiceLists.h"
#include "entry/QtFormBuilder.h"
#include "entry/QtListFields.h"
#include "reports/ListDaichou.h"
#include "reports/ListDaichou_frm.h"
#include "shell/Dialogs.h"
#include "shell/QtScreens.h"
#include "shell/Session.h"

namespace {

Daichou_frm::Lookup& lookupHook()
{
    static Daichou_frm::Lookup f;
    return f;
}

QString runLookup(const QString& table, const QString& f1, const QString& f2)
{
    if (lookupHook()) return lookupHook()(table, f1, f2);
    Help_frm* h = HelpForm();
    h->Init(table, f1, f2);
    h->exec();
    return h->Hit() ? h->HitCode() : QString();
}

const QString kAll = QStringLiteral("すべて選択");

void setEntries(QComboBox* list, const QList<ListEntry>& entries, bool withAll)
{
    const QSignalBlocker quiet(list);
    list->clear();
    if (withAll) list->addItem(kAll, QVariant(0));
    for (const ListEntry& e : entries) list->addItem(e.text, QVariant(e.code));
    list->setCurrentIndex(withAll ? 0 : -1);
}

QLineEdit* numberBox(QWidget* parent)
{
    auto* b = new QLineEdit(parent);
    b->setMaxLength(2);
    b->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    b->setFixedWidth(48);
    return b;
}

}  // namespace

void Daichou_frm::setLookup(Lookup f) { lookupHook() = std::move(f); }

Daichou_frm::Daichou_frm(QWidget* parent) : QWidget(parent)
{
    setWindowTitle(QStringLiteral("台帳範囲"));
    // A fresh form for every opening, so the next one reads its own MenuKey.
    setAttribute(Qt::WA_DeleteOnClose);
    setFont(screenFont());
    auto* outer = new QVBoxLayout(this);
    title_ = addReportTitle(this, outer);

    auto* grid = new QGridLayout;
    mode_ = new QComboBox(this);
    mode_->addItems({QStringLiteral("月度で表示"), QStringLiteral("日付で表示")});
    grid->addWidget(new QLabel(QStringLiteral("選択方法"), this), 0, 0);
    grid->addWidget(mode_, 0, 1);
    for (int i = 0; i < 3; ++i) {
        cbox_[i] = new QComboBox(this);
        cbox_[i]->setMinimumWidth(280);
        captions_[i] = new QLabel(this);
        grid->addWidget(captions_[i], i + 1, 0);
        grid->addWidget(cbox_[i], i + 1, 1);
    }
    captions_[2]->setText(QStringLiteral("納入先"));

    monthRow_ = new QWidget(this);
    auto* m = new QHBoxLayout(monthRow_);
    m->setContentsMargins(0, 0, 0, 0);
    getudo_ = numberBox(monthRow_);
    m->addWidget(getudo_);
    m->addWidget(new QLabel(QStringLiteral("月度"), monthRow_));
    m->addStretch(1);
    dateRow_ = new QWidget(this);
    auto* d = new QHBoxLayout(dateRow_);
    d->setContentsMargins(0, 0, 0, 0);
    const QStringList after = {QStringLiteral("月"), QStringLiteral("日 より"), QStringLiteral("月"), QStringLiteral("日 まで")};
    for (int i = 0; i < 4; ++i) {
        dates_[i] = numberBox(dateRow_);
        d->addWidget(dates_[i]);
        d->addWidget(new QLabel(after[i], dateRow_));
    }
    d->addStretch(1);
    grid->addWidget(new QLabel(QStringLiteral("期間"), this), 4, 0);
    auto* period = new QVBoxLayout;
    period->addWidget(monthRow_);
    period->addWidget(dateRow_);
    grid->addLayout(period, 4, 1);
    outer->addLayout(grid);

    disp_ = new QPushButton(QStringLiteral("表     示"), this);
    outer->addWidget(disp_, 0, Qt::AlignRight);
    outer->addWidget(new QLabel(QStringLiteral("ESC：戻る　F6：一覧　リターンキーで次の項目に移動"), this));

    for (QWidget* w : QList<QWidget*>{mode_, cbox_[0], cbox_[1], cbox_[2], getudo_, dates_[0], dates_[1], dates_[2],
                                      dates_[3], disp_})
        w->installEventFilter(this);
    connect(mode_, &QComboBox::currentIndexChanged, this, [this] { modeChanged(); });
    connect(cbox_[0], &QComboBox::currentIndexChanged, this, [this] { fillPartners(); });
    connect(cbox_[1], &QComboBox::currentIndexChanged, this, [this] { fillDestinations(); });
    connect(disp_, &QPushButton::clicked, this, [this] { DispCommand_Click(); });
    loadView(session().MenuKey);
}

void Daichou_frm::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    // One form serves the four views: the menu's word decides each time it comes up.
    const QString key = session().MenuKey;
    if (!ledgerViewName(key).isEmpty() && key != view_) loadView(key);
    mode_->setFocus(Qt::OtherFocusReason);
}

void Daichou_frm::loadView(const QString& view)
{
    view_ = ledgerViewName(view).isEmpty() ? QStringLiteral("Tdc") : view;
    customer_ = view_ == QLatin1String("Tdc") || view_ == QLatin1String("Jdc");
    const bool customer = customer_;
    title_->setText(ledgerViewName(view_));
    captions_[0]->setText(customer ? QStringLiteral("得意先分類") : QStringLiteral("仕入先分類"));
    captions_[1]->setText(customer ? QStringLiteral("得意先") : QStringLiteral("仕入先"));
    captions_[2]->setVisible(customer);
    cbox_[2]->setVisible(customer);
    setEntries(cbox_[0], CodeTableEntries(customer ? QStringLiteral("Tbn") : QStringLiteral("Sbn")), true);
    fillPartners();
    mode_->setCurrentIndex(0);
    modeChanged();
}

void Daichou_frm::modeChanged()
{
    const bool byMonth = mode_->currentIndex() != 1;
    monthRow_->setVisible(byMonth);
    dateRow_->setVisible(!byMonth);
}

void Daichou_frm::fillPartners()
{
    const bool customer = customer_;
    const std::optional<int> cls = ListCode(cbox_[0]);
    const std::optional<int> chosen = cls && *cls != 0 ? cls : std::nullopt;
    setEntries(cbox_[1], customer ? TorEntries(chosen) : SirEntries(chosen), true);
    fillDestinations();
}

void Daichou_frm::fillDestinations()
{
    const std::optional<int> tor = ListCode(cbox_[1]);
    setEntries(cbox_[2], tor && *tor != 0 && customer_ ? NouEntries(*tor) : QList<ListEntry>{}, false);
}

QList<QWidget*> Daichou_frm::order() const
{
    QList<QWidget*> out{mode_, cbox_[0], cbox_[1]};
    if (customer_) out << cbox_[2];
    if (mode_->currentIndex() != 1) out << getudo_;
    else out << dates_[0] << dates_[1] << dates_[2] << dates_[3];
    out << disp_;
    return out;
}

void Daichou_frm::move(QWidget* from, int step)
{
    const QList<QWidget*> o = order();
    const int at = int(o.indexOf(from));
    const int to = qBound(0, at + step, int(o.size()) - 1);
    if (at < 0) return;
    o[to]->setFocus(Qt::OtherFocusReason);
    if (auto* box = qobject_cast<QLineEdit*>(o[to])) box->selectAll();
}

bool Daichou_frm::checkBox(QLineEdit* box)
{
    using B = ListDaichou::RangeBox;
    const B kind = box == getudo_ ? B::Getudo : (box == dates_[StartMonth] || box == dates_[EndMonth]) ? B::Month : B::Day;
    int v = 0;
    const QString message = ListDaichou::checkRangeBox(kind, box->text(), &v);
    if (message.isEmpty()) return true;
    Tell(message);
    box->setFocus(Qt::OtherFocusReason);
    box->selectAll();
    return false;
}

bool Daichou_frm::readRange(LedgerRange* r)
{
    for (QWidget* w : order())
        if (auto* box = qobject_cast<QLineEdit*>(w); box && !checkBox(box)) return false;
    r->view = view_;
    r->byMonth = mode_->currentIndex() != 1;
    r->partner = ListCode(cbox_[1]).value_or(0);
    r->nou = customer_ ? ListCode(cbox_[2]).value_or(0) : 0;
    if (r->byMonth) {
        r->month = getudo_->text().trimmed().toInt();
    } else {
        r->startMonth = dates_[StartMonth]->text().trimmed().toInt();
        r->startDay = dates_[StartDay]->text().trimmed().toInt();
        r->endMonth = dates_[EndMonth]->text().trimmed().toInt();
        r->endDay = dates_[EndDay]->text().trimmed().toInt();
    }
    return true;
}

void Daichou_frm::DispCommand_Click()
{
    LedgerRange r;
    if (!readRange(&r)) return;
    auto* viewer = qobject_cast<ListDaichou_frm*>(::screen(QStringLiteral("ListDaichou_frm")));
    if (!viewer) return;
    viewer->Init(r);
    viewer->show();
    viewer->raise();
    viewer->activateWindow();
}

void Daichou_frm::lookup(int index)
{
    const bool customer = customer_;
    QString code;
    if (index == 0) {
        code = runLookup(customer ? QStringLiteral("Tbn") : QStringLiteral("Sbn"), QString(), QString());
    } else if (index == 1) {
        const int cls = ListCode(cbox_[0]).value_or(0);
        code = runLookup(customer ? QStringLiteral("Tor") : QStringLiteral("Sir"),
                         cls ? QString::number(cls) : QStringLiteral("ALL"), QString());
    } else {
        const int tor = ListCode(cbox_[1]).value_or(0);
        if (tor == 0) return;
        code = runLookup(QStringLiteral("Nou"), QString::number(tor), QString());
    }
    if (!code.isEmpty()) FindListCode(cbox_[index], code.toInt());
}

bool Daichou_frm::listKey(int index, int key, Qt::KeyboardModifiers mods)
{
    QComboBox* list = index < 0 ? mode_ : cbox_[index];
    // Keypad digits and Enter choose an entry by its code, as in every choice list.
    if ((mods & Qt::KeypadModifier) && key >= Qt::Key_0 && key <= Qt::Key_9) {
        typed_ += QChar(u'0' + (key - Qt::Key_0));
        return true;
    }
    switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (!typed_.isEmpty() && index >= 0) FindListCode(list, typed_.size() > 9 ? -1 : typed_.toInt());
        else if (typed_ == QLatin1String("1") || typed_ == QLatin1String("2")) list->setCurrentIndex(typed_.toInt() - 1);
        typed_.clear();
        move(list, 1);
        return true;
    case Qt::Key_Down:
        typed_.clear();
        move(list, 1);
        return true;
    case Qt::Key_Up:
        typed_.clear();
        move(list, -1);
        return true;
    case Qt::Key_Delete:
        if (index >= 0) list->setCurrentIndex(index == 2 ? -1 : 0);
        return true;
    case Qt::Key_F6:
        if (index >= 0) lookup(index);
        return true;
    default:
        return false;
    }
}

bool Daichou_frm::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::FocusIn) typed_.clear();
    if (event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
    auto* e = static_cast<QKeyEvent*>(event);
    const int key = e->key();
    if (key == Qt::Key_Escape) {
        close();
        return true;
    }
    if (key == Qt::Key_Tab || key == Qt::Key_Backtab) return true;
    auto* w = static_cast<QWidget*>(watched);
    if (w == mode_) return listKey(-1, key, e->modifiers());
    for (int i = 0; i < 3; ++i)
        if (w == cbox_[i]) return listKey(i, key, e->modifiers());
    if (w == disp_) {
        if (key == Qt::Key_Return || key == Qt::Key_Enter) DispCommand_Click();
        else if (key == Qt::Key_Up) move(w, -1);
        else return false;
        return true;
    }
    auto* box = qobject_cast<QLineEdit*>(w);
    if (!box) return QWidget::eventFilter(watched, event);
    switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Down:
        if (!checkBox(box)) return true;
        // Enter in the period's last box shows the ledger.
        if (key != Qt::Key_Down && order().at(order().size() - 2) == box) DispCommand_Click();
        else move(box, 1);
        return true;
    case Qt::Key_Up:
        move(box, -1);
        return true;
    default:
        return false;
    }
}
