// The grid of Slip_frm: the focus flow of each cell, scrolling, lines and the tip box.
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QSignalBlocker>

#include "entry/Convert.h"
#include "entry/KeyCodes.h"
#include "shell/Dialogs.h"
#include "slips/QtSlipScreens.h"
#include "slips/Slip_frm.h"

namespace {
QLineEdit* edit(QWidget* w) { return qobject_cast<QLineEdit*>(w); }
QComboBox* combo(QWidget* w) { return qobject_cast<QComboBox*>(w); }

QString formatOf(Slip_frm::GridField f)
{
    switch (f) {
    case Slip_frm::fSuu: return SlipFormat::Suu;
    case Slip_frm::fSTanka:
    case Slip_frm::fTanka: return SlipFormat::Tanka;
    case Slip_frm::fSGaku:
    case Slip_frm::fGaku: return SlipFormat::Gaku;
    case Slip_frm::fZei: return SlipFormat::ZeiLine;
    default: return QString();
    }
}
}  // namespace

void Slip_frm::pushRows()
{
    for (int r = 0; r < SlipEditor::RowCount; ++r) {
        SlipRow& row = ed_.rows[r];
        row.fKubun = combo(cells_[r][fKubun])->currentIndex();
        QString* texts[] = {nullptr, &row.fHinCode, &row.fHinNamae, &row.fSuu, &row.fSTanka,
                            &row.fTanka, &row.fSGaku, &row.fGaku, &row.fZei};
        for (int f = fHinCode; f < GridFieldCount; ++f) *texts[f] = edit(cells_[r][f])->text();
    }
}

void Slip_frm::pullRows()
{
    const bool was = pulling_;
    pulling_ = true;
    for (int r = 0; r < SlipEditor::RowCount; ++r) {
        const SlipRow& row = ed_.rows[r];
        QComboBox* k = combo(cells_[r][fKubun]);
        k->setCurrentIndex(row.fKubun < k->count() ? row.fKubun : -1);
        const QString* texts[] = {nullptr, &row.fHinCode, &row.fHinNamae, &row.fSuu, &row.fSTanka,
                                  &row.fTanka, &row.fSGaku, &row.fGaku, &row.fZei};
        for (int f = fHinCode; f < GridFieldCount; ++f) {
            QLineEdit* b = edit(cells_[r][f]);
            if (b->text() != *texts[f]) b->setText(*texts[f]);
        }
        zeiInfo_[r]->setText(row.ZeiInfo);
        lineNo_[r]->setText(row.LineNo);
    }
    {
        const QSignalBlocker block(bar_);
        bar_->setValue(ed_.Bar);
    }
    pulling_ = was;
}

void Slip_frm::focusCell(GridField f, int row)
{
    if (row < 0 || row >= SlipEditor::RowCount) return;
    cells_[row][f]->setFocus(Qt::OtherFocusReason);
}

void Slip_frm::showTip(const QString& text, QWidget* under)
{
    if (text.isEmpty() || !under) {
        tip_->hide();
        return;
    }
    tip_->setText(text);
    tip_->adjustSize();
    tip_->move(under->mapTo(this, QPoint(0, under->height() + 1)));
    tip_->show();
    tip_->raise();
}

void Slip_frm::gridFocusIn(GridField f, int row)
{
    lastRow_ = row;
    if (f == fSuu || f == fTanka) {
        pushRows();
        showTip(ed_.tipText(f == fSuu ? SlipEditor::TipField::Suu : SlipEditor::TipField::Tanka, row), cells_[row][f]);
    } else if (f != fKubun) {
        tip_->hide();
    }
    if (QLineEdit* b = edit(cells_[row][f])) b->selectAll();
}

void Slip_frm::gridLeft(GridField f, int row)
{
    const QString format = formatOf(f);
    QLineEdit* b = edit(cells_[row][f]);
    if (format.isEmpty() || !b) return;
    // A row the clerk has not filled stays blank.
    if (!HasText(edit(cells_[row][fHinCode])->text())) return;
    const QString shown = SlipEditor::formatCell(b->text(), format);
    if (shown != b->text()) b->setText(shown);
}

void Slip_frm::scrollBy(int delta)
{
    onEditor([&] { ed_.scrollTo(ed_.Bar + delta); });
}

void Slip_frm::nextLine(int row)
{
    if (row < SlipEditor::RowCount - 1) {
        focusCell(fKubun, row + 1);
    } else if (ed_.Bar < SlipEditor::MaxBar) {
        scrollBy(1);
        focusCell(fKubun, row);
    } else {
        Tell(QStringLiteral("伝票を保存します。"));
        doFunctionKey(vbKeyF10);
    }
}

void Slip_frm::productLookup(int row)
{
    pushHead();
    const SlipLookup l = ed_.productLookup();
    const QString code = SlipScreens::runLookup(l);
    if (code.isEmpty()) return;
    edit(cells_[row][fHinCode])->setText(code);
    bool found = false;
    onEditor([&] { found = ed_.loadProductToLine(row); });
    if (found) focusCell(fHinNamae, row);
}

void Slip_frm::lineDelete(int row)
{
    onEditor([&] { ed_.deleteLine(row); });
    focusCell(fKubun, row);
}

void Slip_frm::lineInsert(int row)
{
    onEditor([&] { ed_.insertLine(row); });
    focusCell(fKubun, row);
}

bool Slip_frm::gridKey(GridField f, int row, int key, int shift)
{
    lastRow_ = row;
    const bool enter = key == vbKeyReturn;
    const bool up = key == vbKeyUp, down = key == vbKeyDown;
    // The kind test: a line without its kind goes back to the kind list.
    auto hasKind = [&] {
        pushRows();
        if (ed_.lineHasKubun(row)) return true;
        focusCell(fKubun, row);
        return false;
    };
    auto work = [&] { onEditor([&] { ed_.work(row); }); };

    if (key == vbKeyEscape) {
        if (f == fZei) focusCell(fGaku, row);
        else bu_.focusItem(0);
        return true;
    }
    if (key == vbKeyTab) {
        // fZei is reached by Tab or the mouse only.
        if (f == fGaku && shift != vbShiftMask) focusCell(fZei, row);
        else if (f == fZei && shift == vbShiftMask) focusCell(fGaku, row);
        return true;
    }
    switch (f) {
    case fKubun: {
        if (enter) {
            QComboBox* k = combo(cells_[row][fKubun]);
            if (k->currentIndex() < 0) k->setCurrentIndex(0);
            focusCell(fHinCode, row);
        } else if (up) {
            if (row > 0) focusCell(fKubun, row - 1);
            else if (ed_.Bar > 0) scrollBy(-1);
            else bu_.focusItem(10);
        } else if (down) {
            if (row < SlipEditor::RowCount - 1) focusCell(fKubun, row + 1);
            else if (ed_.Bar < SlipEditor::MaxBar) scrollBy(1);
        } else {
            return false;
        }
        return true;
    }
    case fHinCode:
        if (enter) {
            if (!hasKind()) return true;
            bool found = false;
            if (!HasText(edit(cells_[row][fHinCode])->text())) {
                productLookup(row);
                return true;
            }
            onEditor([&] { found = ed_.loadProductToLine(row); });
            if (found) focusCell(fHinNamae, row);
        } else if (up) {
            focusCell(fKubun, row);
        } else if (down) {
            focusCell(fHinNamae, row);
        } else {
            return false;
        }
        return true;
    case fHinNamae:
        if (enter) {
            if (!hasKind()) return true;
            onEditor([&] { ed_.readRowsToLines(); });
            focusCell(fSuu, row);
        } else if (up) {
            focusCell(fHinCode, row);
        } else if (down) {
            focusCell(fSuu, row);
        } else {
            return false;
        }
        return true;
    case fSuu:
        if (enter || up) {
            // Refused where it is typed: the cell keeps the focus and its text.
            bool fits = true;
            onEditor([&] { fits = ed_.quantityFits(row); });
            if (!fits) {
                edit(cells_[row][fSuu])->selectAll();
                return true;
            }
        }
        if (enter) {
            if (!hasKind()) return true;
            work();
            focusCell(fSTanka, row);
        } else if (up) {
            work();
            focusCell(fHinNamae, row);
        } else if (!down) {
            return false;
        }
        return true;
    case fSTanka:
        if (enter) {
            work();
            focusCell(fTanka, row);
        } else if (up) {
            work();
            focusCell(fSuu, row);
        } else if (!down) {
            return false;
        }
        return true;
    case fTanka:
        if (enter || down) {
            if (!hasKind()) return true;
            work();
            QLineEdit* g = edit(cells_[row][fGaku]);
            g->setText(g->text().trimmed());
            focusCell(fGaku, row);
        } else if (up) {
            work();
            focusCell(fSuu, row);
        } else {
            return false;
        }
        return true;
    case fSGaku:
        if (enter) focusCell(fGaku, row);
        else if (up) focusCell(fTanka, row);
        else if (!down) return false;
        return true;
    case fGaku:
        if (enter || down) {
            if (!hasKind()) return true;
            onEditor([&] {
                ed_.readRowsToLines();
                ed_.calcLineTax(row);
                ed_.showTotals(1);
            });
            nextLine(row);
        } else if (up) {
            focusCell(fTanka, row);
        } else {
            return false;
        }
        return true;
    case fZei:
        if (enter) {
            onEditor([&] { ed_.typeLineTax(row); });
            focusCell(fGaku, row);
        } else if (up) {
            focusCell(fGaku, row);
        } else if (!down) {
            return false;
        }
        return true;
    default:
        return false;
    }
}
