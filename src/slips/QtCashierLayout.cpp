// The layout of Cashier_frm: head fields, the six money rows with their sum, the panel of the
// partner's months, buttons and the help line.
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "entry/KeyCodes.h"
#include "entry/QtFormBuilder.h"
#include "shell/Session.h"
#include "slips/Cashier_frm.h"
#include "slips/QtSlipScreens.h"

using SlipScreens::framed;
using SlipScreens::raised;

void Cashier_frm::build()
{
    QVBoxLayout* outer = buildFrame();
    auto* body = new QHBoxLayout;
    body->setSpacing(24);
    auto* left = new QVBoxLayout;
    left->setSpacing(10);
    left->addWidget(buildHead());
    left->addWidget(buildGrid());
    left->addStretch(1);
    body->addLayout(left);
    body->addWidget(buildPanel(), 0, Qt::AlignTop);
    outer->addLayout(body);
    outer->addWidget(buildFoot());
    kurikoshi_->installEventFilter(this);
}

QWidget* Cashier_frm::buildHead()
{
    auto* w = new QWidget(this);
    auto* g = new QGridLayout(w);
    g->setContentsMargins(0, 0, 0, 0);
    g->setHorizontalSpacing(8);
    g->setVerticalSpacing(6);
    QHBoxLayout* date = buildHeadFields(w, {"00_N#####0", "01_N####", "02_N##", "03_N##", "08_N#####0"},
                                        {8, 6, 4, 4, 8}, {16, 30, 24, 14});
    auto caption = [&](const QString& t) { return new QLabel(t, w); };

    dateCaption_ = caption(QString());
    classCaption_ = caption(QString());
    partnerCaption_ = caption(QString());
    nouCaption_ = caption(QStringLiteral("納入先"));
    g->addWidget(caption(QStringLiteral("伝票No.")), 0, 0);
    g->addWidget(ebox_[DnoBox], 0, 1, Qt::AlignLeft);
    g->addWidget(dateCaption_, 1, 0);
    g->addLayout(date, 1, 1);
    g->addWidget(classCaption_, 2, 0);
    g->addWidget(cbox_[ClassList], 2, 1, Qt::AlignLeft);
    g->addWidget(partnerCaption_, 3, 0);
    g->addWidget(cbox_[PartnerList], 3, 1, Qt::AlignLeft);
    g->addWidget(nouCaption_, 4, 0);
    g->addWidget(cbox_[NouList], 4, 1, Qt::AlignLeft);
    g->addWidget(caption(QStringLiteral("担当者")), 5, 0);
    auto* tan = new QHBoxLayout;
    tan->setSpacing(8);
    tan->addWidget(cbox_[TanList]);
    tan->addSpacing(16);
    tan->addWidget(caption(QStringLiteral("請求No.")));
    tan->addWidget(ebox_[NNoBox]);
    tan->addStretch(1);
    g->addLayout(tan, 5, 1);
    g->setColumnStretch(1, 1);
    return w;
}

QWidget* Cashier_frm::buildGrid()
{
    auto* w = new QWidget(this);
    auto* g = new QGridLayout(w);
    g->setContentsMargins(0, 6, 0, 0);
    g->setHorizontalSpacing(2);
    g->setVerticalSpacing(2);
    const int half = halfWidth();
    const QString heads[] = {QString(), QStringLiteral("区分"), QStringLiteral("内容"), QStringLiteral("金額")};
    for (int c = 0; c < 4; ++c) g->addWidget(raised(w, heads[c]), 0, c);
    const QString numbers[] = {QStringLiteral("１"), QStringLiteral("２"), QStringLiteral("３"),
                               QStringLiteral("４"), QStringLiteral("５"), QStringLiteral("６")};
    const int widths[GridFieldCount] = {8, 32, 12};
    for (int r = 0; r < CashSlipEditor::RowCount; ++r) {
        QLabel* no = framed(w, Qt::AlignCenter);
        no->setText(numbers[r]);
        no->setFixedWidth(half * 3 + 8);
        g->addWidget(no, r + 1, 0);
        for (int f = 0; f < GridFieldCount; ++f) {
            QWidget* cell;
            if (f == dKubun) {
                auto* c = new QComboBox(w);
                c->addItems(CashSlipEditor::kubunTexts());
                c->setCurrentIndex(-1);
                cell = c;
            } else {
                auto* b = new QLineEdit(w);
                if (f == dGaku) {
                    b->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
                    b->setMaxLength(11);
                } else {
                    b->setMaxLength(30);
                }
                cell = b;
            }
            cell->setFixedWidth(half * widths[f] + (f == dKubun ? 28 : 10));
            cell->installEventFilter(this);
            cells_[r][f] = cell;
            gridOf_.insert(cell, {GridField(f), r});
            g->addWidget(cell, r + 1, f + 1);
        }
    }
    auto* sum = new QHBoxLayout;
    sum->addStretch(1);
    sum->addWidget(new QLabel(QStringLiteral("合計"), w));
    sum->addSpacing(6);
    gakukei_ = framed(w, Qt::AlignRight | Qt::AlignVCenter);
    gakukei_->setFixedWidth(half * widths[dGaku] + 10);
    sum->addWidget(gakukei_);
    g->addLayout(sum, CashSlipEditor::RowCount + 1, 0, 1, 4);
    return w;
}

QWidget* Cashier_frm::buildPanel()
{
    auto* w = new QWidget(this);
    auto* g = new QGridLayout(w);
    g->setContentsMargins(0, 0, 0, 0);
    g->setHorizontalSpacing(2);
    g->setVerticalSpacing(2);
    const int half = halfWidth();
    const int figure = half * 12 + 10;
    g->addWidget(new QLabel(QStringLiteral("前期繰越"), w), 0, 0, Qt::AlignRight);
    kurikoshi_ = new QLineEdit(w);
    kurikoshi_->setObjectName(QStringLiteral("dKurikoshi"));
    kurikoshi_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    kurikoshi_->setMaxLength(12);
    kurikoshi_->setFixedWidth(figure);
    g->addWidget(kurikoshi_, 0, 2);

    g->addWidget(raised(w, QStringLiteral("月")), 1, 0);
    refersHead_ = raised(w, QString());
    resultsHead_ = raised(w, QString());
    g->addWidget(refersHead_, 1, 1);
    g->addWidget(resultsHead_, 1, 2);
    for (int i = 0; i < CashPanel::MonthCount; ++i) {
        months_[i] = framed(w, Qt::AlignCenter);
        months_[i]->setMinimumWidth(half * 11);
        refers_[i] = framed(w, Qt::AlignRight | Qt::AlignVCenter);
        results_[i] = framed(w, Qt::AlignRight | Qt::AlignVCenter);
        refers_[i]->setFixedWidth(figure);
        results_[i]->setFixedWidth(figure);
        g->addWidget(months_[i], i + 2, 0);
        g->addWidget(refers_[i], i + 2, 1);
        g->addWidget(results_[i], i + 2, 2);
    }
    g->addWidget(new QLabel(QStringLiteral("残高"), w), CashPanel::MonthCount + 2, 1, Qt::AlignRight);
    zandaka_ = framed(w, Qt::AlignRight | Qt::AlignVCenter);
    zandaka_->setObjectName(QStringLiteral("dZandaka"));
    zandaka_->setFixedWidth(figure);
    g->addWidget(zandaka_, CashPanel::MonthCount + 2, 2);
    return w;
}

QWidget* Cashier_frm::buildFoot()
{
    auto* w = new QWidget(this);
    auto* v = new QVBoxLayout(w);
    v->setContentsMargins(0, 4, 0, 0);
    addButtons(v, w,
               {QStringLiteral("画面消去(F1)"), QStringLiteral("伝票削除(F2)"), QStringLiteral("一覧(F6)"),
                QStringLiteral("保存(F10)"), QStringLiteral("ﾒﾆｭｰに戻る(Esc)")},
               commands_);
    connect(commands_[ClearCmd], &QPushButton::clicked, this, [this] { doFunctionKey(vbKeyF1); });
    connect(commands_[DeleteCmd], &QPushButton::clicked, this, [this] { doFunctionKey(vbKeyF2); });
    connect(commands_[ListCmd], &QPushButton::clicked, this, [this] { doFunctionKey(vbKeyF6); });
    connect(commands_[SaveCmd], &QPushButton::clicked, this, [this] { doFunctionKey(vbKeyF10); });
    connect(commands_[CloseCmd], &QPushButton::clicked, this, [this] { close(); });
    return w;
}

void Cashier_frm::showKindCaptions()
{
    setWindowTitle(ed_.title());
    title_->setText(ed_.title());
    dateCaption_->setText(ed_.dateCaption());
    classCaption_->setText(ed_.classCaption());
    partnerCaption_->setText(ed_.partnerCaption());
    nouCaption_->setVisible(ed_.deposit());
    refersHead_->setText(ed_.refersCaption());
    resultsHead_->setText(ed_.resultsCaption());
}
