#include "slips/SlipList_frm.h"
#include <QEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QTableWidget>
#include <QVBoxLayout>
#include "entry/QtFormBuilder.h"
#include "shell/Session.h"
#include "slips/SlipPick.h"

SlipList_frm::SlipList_frm(QWidget* parent) : QDialog(parent)
{
    setWindowTitle(QStringLiteral("伝票一覧"));
    setFont(screenFont());
    auto* v = new QVBoxLayout(this);
    List = new QTableWidget(0, 3, this);
    List->setObjectName(QStringLiteral("List"));
    // "適用" is the list's own heading, though the field is captioned "摘要".
    List->setHorizontalHeaderLabels({QStringLiteral("番号"), QStringLiteral("日付"), QStringLiteral("適用")});
    List->verticalHeader()->hide();
    List->setSelectionBehavior(QAbstractItemView::SelectRows);
    List->setSelectionMode(QAbstractItemView::SingleSelection);
    List->setEditTriggers(QAbstractItemView::NoEditTriggers);
    List->setColumnWidth(0, 80);
    List->setColumnWidth(1, 190);
    List->horizontalHeader()->setStretchLastSection(true);
    List->installEventFilter(this);
    v->addWidget(List);
    resize(560, 380);
}

void SlipList_frm::Init(const QString& kind, qint64 partner)
{
    answer_.clear();
    const QList<SlipListRow> rows = slipListRows(kind, partner, session().EigCode);
    List->setRowCount(rows.size());
    const double scale = session().ScreenScale.toDouble() > 0 ? session().ScreenScale.toDouble() : 1.0;
    for (int r = 0; r < rows.size(); ++r) {
        auto* n = new QTableWidgetItem(rows[r].number);
        n->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        List->setItem(r, 0, n);
        List->setItem(r, 1, new QTableWidgetItem(rows[r].date));
        List->setItem(r, 2, new QTableWidgetItem(rows[r].tekiyo));
        List->setRowHeight(r, qRound(16 * scale));   // 240 twips
    }
    if (!rows.isEmpty()) List->setCurrentCell(0, 0);
    List->setFocus();
}

bool SlipList_frm::eventFilter(QObject* o, QEvent* e)
{
    if (o == List && e->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(e)->key();
        switch (key) {
        case Qt::Key_Left:
        case Qt::Key_Right:
            return true;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (List->currentRow() >= 0 && List->item(List->currentRow(), 0))
                answer_ = List->item(List->currentRow(), 0)->text().trimmed();
            accept();
            return true;
        case Qt::Key_Escape:
            answer_.clear();
            reject();
            return true;
        default:
            break;
        }
    }
    return QDialog::eventFilter(o, e);
}

QString SlipList_frm::pick(const QString& kind, qint64 partner)
{
    SlipList_frm f;
    f.Init(kind, partner);
    f.exec();
    return f.answer();
}
