#include "entry/QtFormBuilder.h"

#include <QComboBox>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "entry/FieldTag.h"

namespace {
QLabel* label(const QString& text, QWidget* parent)
{
    auto* l = new QLabel(text, parent);
    l->setTextFormat(Qt::PlainText);
    return l;
}
}  // namespace

bool isListDecl(const FieldDecl& d) { return !d.tag.contains(QLatin1Char('_')); }

QFont screenFont(double points)
{
    QFont f(QStringLiteral("ＭＳ ゴシック"));
    f.setPointSizeF(points);
    return f;
}

QStringList standardCommands(bool withList)
{
    QStringList c = {QStringLiteral("メニューに戻る(Esc)"), QStringLiteral("画面クリア(F1)"),
                     QStringLiteral("保存(F10)"), QStringLiteral("削除(F2)")};
    if (withList) c << QStringLiteral("一覧(F6)");
    return c;
}

BuiltForm buildEntryForm(QWidget* form, const QString& title, const QList<FieldDecl>& fields,
                         const QStringList& commands)
{
    BuiltForm b;
    form->setFont(screenFont());
    form->setWindowTitle(title);
    const QFontMetrics fm(form->font());
    const int halfWidth = fm.horizontalAdvance(QLatin1Char('0'));

    auto* outer = new QVBoxLayout(form);
    outer->setContentsMargins(16, 12, 16, 12);
    outer->setSpacing(10);

    auto* top = new QHBoxLayout;
    b.title = label(title, form);
    b.title->setFont(screenFont(16));
    b.mode = label(QStringLiteral("参照"), form);
    b.mode->setObjectName(QStringLiteral("mode"));
    b.mode->setFrameShape(QFrame::Box);
    b.mode->setAlignment(Qt::AlignCenter);
    b.mode->setMinimumWidth(halfWidth * 8);
    top->addWidget(b.title);
    top->addStretch(1);
    top->addWidget(b.mode);
    outer->addLayout(top);

    auto* rule = new QFrame(form);
    rule->setFrameShape(QFrame::HLine);
    rule->setFrameShadow(QFrame::Sunken);
    outer->addWidget(rule);

    auto* panes = new QHBoxLayout;
    QGridLayout* grids[2] = {new QGridLayout, new QGridLayout};
    int rows[2] = {0, 0};
    for (QGridLayout* g : grids) {
        g->setHorizontalSpacing(12);
        g->setVerticalSpacing(6);
        g->setColumnStretch(3, 1);
    }
    for (const FieldDecl& d : fields) {
        const int p = d.pane == 1 ? 1 : 0;
        QLabel* cap = label(d.caption, form);
        QWidget* w = nullptr;
        if (isListDecl(d)) {
            auto* list = new QComboBox(form);
            list->addItem(d.tag);
            list->setMinimumWidth(halfWidth * ((d.width > 0 ? d.width : 20) + 4));
            list->setProperty("Column", d.column);
            b.cbox << list;
            w = list;
        } else {
            auto* box = new QLineEdit(form);
            box->setProperty("Tag", d.tag);
            box->setProperty("Column", d.column);
            const FieldTag t = parseTag(d.tag);
            const int chars = d.width > 0 ? d.width : (t.valid ? t.maxLength() : 10);
            box->setFixedWidth(halfWidth * (chars + 2) + 8);
            b.ebox << box;
            w = box;
        }
        cap->setBuddy(w);
        grids[p]->addWidget(cap, rows[p], 0);
        grids[p]->addWidget(w, rows[p], 1, Qt::AlignLeft);
        if (!d.note.isEmpty()) grids[p]->addWidget(label(d.note, form), rows[p], 2);
        ++rows[p];
        b.captions << cap;
        b.fieldWidgets << w;
    }
    // The point where the next Enter saves: after the last field.
    auto* rec = new QLineEdit(form);
    rec->setObjectName(QStringLiteral("RecField"));
    rec->setReadOnly(true);
    rec->setFixedWidth(halfWidth * 3);
    const int recPane = rows[1] > 0 ? 1 : 0;
    grids[recPane]->addWidget(rec, rows[recPane]++, 1, Qt::AlignLeft);
    b.recField = rec;
    for (int p = 0; p < 2; ++p) {
        grids[p]->setRowStretch(rows[p], 1);
        if (rows[p] > 0) panes->addLayout(grids[p], 1);
    }
    outer->addLayout(panes, 1);

    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(8);
    for (const QString& c : commands) {
        auto* btn = new QPushButton(c, form);
        btn->setFocusPolicy(Qt::NoFocus);
        btn->setAutoDefault(false);
        buttons->addWidget(btn);
        b.commands << btn;
    }
    buttons->addStretch(1);
    outer->addLayout(buttons);

    b.message = label(QString(), form);
    b.message->setObjectName(QStringLiteral("message"));
    b.message->setFrameShape(QFrame::Panel);
    b.message->setFrameShadow(QFrame::Sunken);
    b.message->setMinimumHeight(fm.height() + 8);
    outer->addWidget(b.message);
    return b;
}
