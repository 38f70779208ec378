#include "masters/QtPriceForm.h"

#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTableWidget>
#include <QVBoxLayout>

#include "entry/Convert.h"
#include "entry/KeyCodes.h"
#include "entry/Recordset.h"
#include "entry/Utility.h"
#include "masters/HinRules.h"
#include "masters/NouRules.h"
#include "masters/QtMasterFields.h"
#include "shell/Dialogs.h"
#include "shell/Session.h"

namespace {
const QString kPricePicture = QStringLiteral("##,##0.00");

QList<FieldDecl> priceFields(const PriceKind& k)
{
    const QString side = QStringLiteral(" ");
    QList<FieldDecl> f = {{k.partnerCaption, QStringLiteral("00_N#######"), k.partnerColumn, side}};
    const int n = k.withNou ? 1 : 0;
    if (k.withNou) f << FieldDecl{QStringLiteral("納入先"), QStringLiteral("01_N######"), QStringLiteral("NouCode"), side};
    f << FieldDecl{QStringLiteral("商品コード"), QStringLiteral("%1_S13").arg(1 + n, 2, 10, QLatin1Char('0')),
                   QStringLiteral("HinCode"), side};
    f << FieldDecl{QStringLiteral("単価"), QStringLiteral("%1_N##,##0.00").arg(2 + n, 2, 10, QLatin1Char('0')),
                   QStringLiteral("Tanka")};
    return f;
}
}  // namespace

PriceForm::PriceForm(const PriceKind* kind, QWidget* parent) : EntryForm(parent), kind_(kind)
{
    setAttribute(Qt::WA_DeleteOnClose);
    if (kind_->withNou) {
        nouBox_ = 1;
        hinBox_ = 2;
        priceBox_ = 3;
    }
    buildForm(kind_->title, priceFields(*kind_), false, true);
    // These forms neither save by key nor delete by key: the grid erases.
    for (int i : {2, 3})
        if (QPushButton* b = Command(i)) b->setVisible(false);
    const int chars = fontMetrics().horizontalAdvance(QLatin1Char('0'));
    for (int f = 0; f < fields().size() - 1; ++f) {
        if (QLabel* l = SideLabel(*this, f)) {
            l->clear();
            l->setMinimumWidth(chars * 30);
        }
    }

    list_ = new QTableWidget(0, 3, this);
    list_->setObjectName(QStringLiteral("List"));
    list_->setHorizontalHeaderLabels({QStringLiteral("商品コード"), QStringLiteral("商品名"), QStringLiteral("単価")});
    list_->verticalHeader()->setVisible(false);
    list_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    list_->setSelectionBehavior(QAbstractItemView::SelectRows);
    list_->setSelectionMode(QAbstractItemView::SingleSelection);
    list_->setFocusPolicy(Qt::NoFocus);   // the keyboard stays in the fields
    list_->setColumnWidth(0, chars * 15);
    list_->setColumnWidth(1, chars * 32);
    list_->setColumnWidth(2, chars * 12);
    list_->horizontalHeader()->setStretchLastSection(true);
    list_->setMinimumWidth(chars * (15 + 32 + 12) + list_->verticalScrollBar()->sizeHint().width() + 8);
    list_->setMinimumHeight(fontMetrics().height() * 12);
    connect(list_, &QTableWidget::cellDoubleClicked, this, [this](int row, int) { eraseRow(row); });
    auto* hint = new QLabel(QStringLiteral("ダブルクリックで消去できます。"), this);
    if (auto* outer = qobject_cast<QVBoxLayout*>(layout())) {
        // Below the fields, above the buttons.
        outer->insertWidget(3, list_, 2);
        outer->insertWidget(4, hint);
    }
    FitHelpLine(*this);
    bu_.clearDisplay();
}

QLabel* PriceForm::sTorNamae() const { return SideLabel(*this, 0); }
QLabel* PriceForm::sNouNamae() const { return kind_->withNou ? SideLabel(*this, 1) : nullptr; }
QLabel* PriceForm::sHinNamae() const { return SideLabel(*this, hinBox_); }

PricePartner PriceForm::partner() const
{
    PricePartner p;
    p.code = CodeNumber(ebox()[0]->text());
    if (nouBox_ >= 0) p.nou = CodeNumber(ebox()[nouBox_]->text());
    return p;
}

QString PriceForm::storedHinCode() const { return hinStoreCode(ebox()[hinBox_]->text().trimmed()); }

void PriceForm::formKeyDown(bool list, int index, int& keyCode, int shift)
{
    if (list) return;
    if (keyCode == vbKeyTab) keyCode = shift == vbShiftMask ? vbKeyUp : vbKeyReturn;
    // Neither saved nor deleted by a function key here.
    if (keyCode == vbKeyF10 || keyCode == vbKeyF2) {
        keyCode = 0;
        return;
    }
    const QList<QLineEdit*> b = ebox();
    if (keyCode == vbKeyF6) {
        keyCode = 0;
        std::optional<QString> hit;
        if (index == 0) hit = LookUp(this, kind_->partnerTable, QStringLiteral("ALL"));
        else if (index == nouBox_) hit = LookUp(this, QStringLiteral("Nou"), ToText(partner().code));
        else if (index == hinBox_) hit = LookUp(this, QStringLiteral("Hin"));
        if (!hit) return;
        b[index]->setText(index == hinBox_ ? hinScreenCode(*hit) : *hit);
        keyCode = vbKeyReturn;
    }
    if (keyCode != vbKeyReturn) return;
    const QSqlDatabase db = session().MasterDb;
    if (index == 0) {
        sTorNamae()->setText(pricePartnerName(db, *kind_, partner().code).value_or(QString()).trimmed());
        showPriceList();
    } else if (index == nouBox_) {
        const PricePartner p = partner();
        sNouNamae()->setText(NouName(p.code, p.nou).trimmed());
        showPriceList();
    } else if (index == hinBox_) {
        const QString code = storedHinCode();
        b[hinBox_]->setText(hinScreenCode(code));
        sHinNamae()->setText(HinName(code).trimmed());
    }
}

void PriceForm::recFieldKeyDown(int& keyCode, int shift)
{
    if (keyCode == vbKeyReturn) {
        Register(bu_.State);
        keyCode = 0;
        return;
    }
    EntryForm::recFieldKeyDown(keyCode, shift);
}

void PriceForm::Register(const QString&)
{
    const QSqlDatabase db = session().MasterDb;
    const PricePartner p = partner();
    const QString hin = storedHinCode();
    // The price is kept as typed; one for a product that does not exist stays out of the list.
    QSqlError err;
    if (registerPrice(db, *kind_, p, hin, ToCur(ebox()[priceBox_]->text()), &err) != ErrorClass::None)
        Tell(StoreErrorText(err));
    showPriceList();
    ebox()[hinBox_]->clear();
    ebox()[priceBox_]->clear();
    sHinNamae()->clear();
    bu_.focusItem(hinBox_);
}

void PriceForm::clearDisplay()
{
    for (QLabel* l : {sTorNamae(), sNouNamae(), sHinNamae()})
        if (l) l->clear();
    list_->setRowCount(0);
}

void PriceForm::showPriceList()
{
    const QList<PriceLine> lines = ::showPriceList(session().MasterDb, *kind_, partner());
    list_->setRowCount(0);
    list_->setRowCount(int(lines.size()));
    for (int r = 0; r < lines.size(); ++r) {
        const PriceLine& l = lines[r];
        auto* code = new QTableWidgetItem(hinScreenCode(l.hinCode));
        code->setData(Qt::UserRole, l.hinCode);
        auto* price = new QTableWidgetItem(FormatRight(l.tanka, kPricePicture));
        price->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        list_->setItem(r, 0, code);
        list_->setItem(r, 1, new QTableWidgetItem(l.namae.trimmed()));
        list_->setItem(r, 2, price);
    }
}

void PriceForm::eraseRow(int row)
{
    const QTableWidgetItem* item = list_->item(row, 0);
    if (!item) return;
    const QString code = item->data(Qt::UserRole).toString();
    if (!Ask(QStringLiteral("削除しますか？"), QStringLiteral("削除"), QStringLiteral("いいえ"))) return;
    QSqlError err;
    if (erasePrice(session().MasterDb, *kind_, partner(), code, &err) != ErrorClass::None) Tell(StoreErrorText(err));
    showPriceList();
}
