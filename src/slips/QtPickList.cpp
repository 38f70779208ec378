#include "slips/QtPickList.h"
#include <QEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QTableWidget>
#include <QVBoxLayout>
#include "entry/QtFormBuilder.h"
#include "shell/Session.h"
#include "slips/SlipPick.h"

PickListDialog::PickListDialog(const QStringList& headings, const QList<int>& widths, QWidget* parent)
    : QDialog(parent)
{
    setWindowTitle(QStringLiteral("伝票一覧"));
    setFont(screenFont());
    auto* v = new QVBoxLayout(this);
    List = new QTableWidget(0, int(headings.size()), this);
    List->setObjectName(QStringLiteral("List"));
    List->setHorizontalHeaderLabels(headings);
    List->verticalHeader()->hide();
    List->setSelectionBehavior(QAbstractItemView::SelectRows);
    List->setSelectionMode(QAbstractItemView::SingleSelection);
    List->setEditTriggers(QAbstractItemView::NoEditTriggers);
    int width = 60;
    for (int c = 0; c < widths.size(); ++c) {
        List->setColumnWidth(c, widths[c]);
        width += widths[c];
    }
    List->horizontalHeader()->setStretchLastSection(true);
    List->installEventFilter(this);
    v->addWidget(List);
    resize(width + 200, 380);
}

void PickListDialog::Init(const QString& kind, qint64 partner)
{
    const QList<SlipListRow> rows = slipListRows(kind, partner, session().EigCode);
    answer_.clear();
    List->setRowCount(int(rows.size()));
    const double scale = session().ScreenScale.toDouble() > 0 ? session().ScreenScale.toDouble() : 1.0;
    for (int r = 0; r < rows.size(); ++r) {
        const QString texts[] = {rows[r].number, rows[r].date, rows[r].tekiyo};
        for (int c = 0; c < List->columnCount(); ++c) {
            auto* item = new QTableWidgetItem(texts[c]);
            if (c == 0) item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            List->setItem(r, c, item);
        }
        List->setRowHeight(r, qRound(16 * scale));   // 240 twips
    }
    if (!rows.isEmpty()) List->setCurrentCell(0, 0);
    List->setFocus();
}

bool PickListDialog::eventFilter(QObject* o, QEvent* e)
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
