#include "slips/CasherList_frm.h"
#include <QEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QTableWidget>
#include <QVBoxLayout>
#include "entry/QtFormBuilder.h"
#include "shell/Session.h"
#include "slips/CashPick.h"

CasherList_frm::CasherList_frm(QWidget* parent) : QDialog(parent)
{
    setWindowTitle(QStringLiteral("伝票一覧"));
    setFont(screenFont());
    auto* v = new QVBoxLayout(this);
    List = new QTableWidget(0, 2, this);
    List->setObjectName(QStringLiteral("List"));
    List->setHorizontalHeaderLabels({QStringLiteral("番号"), QStringLiteral("日付")});
    List->verticalHeader()->hide();
    List->setSelectionBehavior(QAbstractItemView::SelectRows);
    List->setSelectionMode(QAbstractItemView::SingleSelection);
    List->setEditTriggers(QAbstractItemView::NoEditTriggers);
    List->setColumnWidth(0, 90);
    List->horizontalHeader()->setStretchLastSection(true);
    List->installEventFilter(this);
    v->addWidget(List);
    resize(360, 380);
}

void CasherList_frm::Init(const QString& kind, qint64 partner)
{
    answer_.clear();
    const QList<CashListRow> rows = cashListRows(kind, partner, session().EigCode);
    List->setRowCount(rows.size());
    const double scale = session().ScreenScale.toDouble() > 0 ? session().ScreenScale.toDouble() : 1.0;
    for (int r = 0; r < rows.size(); ++r) {
        auto* n = new QTableWidgetItem(rows[r].number);
        n->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        List->setItem(r, 0, n);
        List->setItem(r, 1, new QTableWidgetItem(rows[r].date));
        List->setRowHeight(r, qRound(16 * scale));   // 240 twips
    }
    if (!rows.isEmpty()) List->setCurrentCell(0, 0);
    List->setFocus();
}

bool CasherList_frm::eventFilter(QObject* o, QEvent* e)
{
    if (o == List && e->type() == QEvent::KeyPress) {
        switch (static_cast<QKeyEvent*>(e)->key()) {
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

QString CasherList_frm::pick(const QString& kind, qint64 partner)
{
    CasherList_frm f;
    f.Init(kind, partner);
    f.exec();
    return f.answer();
}
