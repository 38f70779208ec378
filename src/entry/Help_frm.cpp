#include "entry/Help_frm.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QVBoxLayout>

#include "entry/KeyCodes.h"
#include "entry/QtFormBuilder.h"
#include "entry/QtKeys.h"
#include "entry/Utility.h"
#include "shell/Dialogs.h"
#include "shell/QtScreens.h"

namespace {
const int kWidths[4] = {14, 12, 14, 32};   // half-width characters per column
}

Help_frm::Help_frm(QWidget* parent) : QDialog(parent)
{
    setWindowTitle(QStringLiteral("一覧"));
    setFont(screenFont());
    const int half = QFontMetrics(font()).horizontalAdvance(QLatin1Char('0'));

    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(14, 12, 14, 12);
    outer->setSpacing(8);

    auto* top = new QHBoxLayout;
    auto* prompt = new QLabel(QStringLiteral("並び替え､検索 全て表示は '*'"), this);
    kana_ = new QLineEdit(this);
    kana_->setObjectName(QStringLiteral("kana"));
    kana_->setFixedWidth(half * 22);
    kana_->installEventFilter(this);
    top->addWidget(prompt);
    top->addWidget(kana_);
    top->addStretch(1);
    outer->addLayout(top);

    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(0);
    grid->setVerticalSpacing(0);
    const QString heads[4] = {QStringLiteral("コード *1"), QStringLiteral("ふりがな *2"), QStringLiteral("単価 *3"),
                              QStringLiteral("名称 *4")};
    for (int c = 0; c < 4; ++c) {
        heads_[c] = new QLabel(heads[c], this);
        heads_[c]->setFrameShape(QFrame::Panel);
        heads_[c]->setFrameShadow(QFrame::Raised);
        heads_[c]->setMinimumWidth(half * kWidths[c] + 8);
        heads_[c]->setContentsMargins(4, 2, 4, 2);
        grid->addWidget(heads_[c], 0, c);
    }
    for (int r = 0; r < HelpList::PageRows; ++r) {
        for (int c = 0; c < 4; ++c) {
            auto* l = new QLabel(this);
            l->setTextFormat(Qt::PlainText);
            l->setAutoFillBackground(true);
            l->setContentsMargins(4, 1, 4, 1);
            l->setMinimumWidth(half * kWidths[c] + 8);
            grid->addWidget(l, r + 1, c);
            cells_[r][c] = l;
        }
    }
    static const char* names[4] = {"hCode", "hKana", "hRyaku", "hNamae"};
    for (int r = 0; r < HelpList::PageRows; ++r)
        for (int c = 0; c < 4; ++c) cells_[r][c]->setObjectName(QStringLiteral("%1%2").arg(QLatin1String(names[c])).arg(r));
    grid->setColumnStretch(3, 1);
    outer->addLayout(grid);

    auto* help = new QLabel(QStringLiteral("↑、↓、PageUp、PageDown、リターンキー"), this);
    help->setFrameShape(QFrame::Panel);
    help->setFrameShadow(QFrame::Sunken);
    outer->addWidget(help);
}

void Help_frm::Init(const QString& table, const QString& filter1, const QString& filter2)
{
    kana_->clear();
    list_.Init(table, filter1, filter2);
    heads_[2]->setText(list_.head3());
    reportFailure();
    drawPage();
    kana_->setFocus();
}

void Help_frm::reportFailure()
{
    if (!list_.lastError().isEmpty()) Tell(list_.lastError());
}

void Help_frm::drawPage()
{
    const QList<HelpLine> lines = list_.page();
    for (int r = 0; r < HelpList::PageRows; ++r) {
        const bool has = r < lines.size();
        const QString texts[4] = {has ? lines[r].hCode : QString(), has ? lines[r].hKana : QString(),
                                  has ? lines[r].hRyaku : QString(), has ? lines[r].hNamae : QString()};
        const bool lit = has && r == list_.CurRow;
        for (int c = 0; c < 4; ++c) {
            QLabel* l = cells_[r][c];
            l->setText(texts[c]);
            l->setBackgroundRole(lit ? QPalette::Highlight : QPalette::Window);
            l->setForegroundRole(lit ? QPalette::HighlightedText : QPalette::WindowText);
        }
    }
}

bool Help_frm::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != kana_ || event->type() != QEvent::KeyPress) return QDialog::eventFilter(watched, event);
    const int key = vbKeyCode(static_cast<QKeyEvent*>(event));
    switch (key) {
    case vbKeyUp: list_.keyUp(); break;
    case vbKeyDown: list_.keyDown(); break;
    case vbKeyPageUp: list_.pageUp(); break;
    case vbKeyPageDown: list_.pageDown(); break;
    case vbKeyEscape:
        list_.escape();
        done(QDialog::Rejected);
        return true;
    case vbKeyReturn:
        if (list_.enter(kana_->text())) {
            done(list_.Hit ? QDialog::Accepted : QDialog::Rejected);
            return true;
        }
        reportFailure();
        kana_->clear();
        break;
    default:
        return false;
    }
    drawPage();
    return true;
}

Help_frm* HelpForm()
{
    static QPointer<Help_frm> form;
    if (!form) form = new Help_frm;
    return form;
}

void installHelpForm()
{
    registerScreen(QStringLiteral("Help_frm"), [] { return static_cast<QWidget*>(HelpForm()); });
    setZipChooser([](const QString& table, const QString& code) {
        Help_frm* h = HelpForm();
        h->Init(table, code, QString());
        h->exec();
        return h->Hit() ? h->HitCode() : QString();
    });
}
