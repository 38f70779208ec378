// The outputs that put pages on a paged device: a PDF file and the printer.
#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>
#include <QPrintDialog>
#include <QPrinter>
#include <QSaveFile>
#include "pageout/QtPageOutputs.h"
#include "pageout/QtPageSurface.h"
#include "shell/Session.h"

namespace {

constexpr double kTwipsPerInch = 1440;

std::function<bool(QPrinter&)>& printerChooser()
{
    static std::function<bool(QPrinter&)> f;
    return f;
}

// The page of the document in points, upright with its orientation, no margins: the page's
// coordinates are the paper's.
QPageLayout layoutFor(const QSizeF& twips)
{
    const double w = twips.width() / 20.0;
    const double h = twips.height() / 20.0;
    const bool wide = w > h;
    const QPageSize size(wide ? QSizeF(h, w) : QSizeF(w, h), QPageSize::Point, QString(), QPageSize::FuzzyMatch);
    return QPageLayout(size, wide ? QPageLayout::Landscape : QPageLayout::Portrait, QMarginsF(0, 0, 0, 0));
}

void fixPdfFile(const QString& path)
{
    QFile in(path);
    if (!in.open(QIODevice::ReadOnly)) return;
    QByteArray pdf = in.readAll();
    in.close();
    const QByteArray before = pdf;
    fixPdfToUnicode(pdf);
    if (pdf == before) return;
    QSaveFile out(path);
    if (out.open(QIODevice::WriteOnly) && out.write(pdf) == pdf.size()) out.commit();
}

// The pages of a paged device. A document's pages are held until it has come to its end
// whole, so a document that stops leaves none of them. A printer also holds the run's pages
// until finish(), as a job cannot be called back: a run that fails prints nothing. A PDF,
// made in memory and dropped whole with an abandoned run, takes each whole document at once.
class PagedSurface : public QtPageSurface {
public:
    PagedSurface(QPagedPaintDevice* device, bool ownPaper, bool holdRun)
        : device_(device), ownPaper_(ownPaper), holdRun_(holdRun)
    {
    }
    bool hasOwnPaper() const override { return ownPaper_; }
    void endDocument() override
    {
        whole_ = held_.size();
        if (!holdRun_) ok_ = put() && ok_;
    }
    void discardPage() override
    {
        QtPageSurface::discardPage();
        held_.resize(whole_);
    }
    int pages() const { return put_ + int(whole_); }

    // The last pages on the device, and the device ended. False with errorText().
    bool finish() { return put() && ok_ && (!painter_.isActive() || painter_.end() || fail()); }

protected:
    bool emitPage(const PageDrawing& page) override
    {
        held_ << page;
        return true;
    }

private:
    // Puts the pages of the whole documents on the device.
    bool put()
    {
        for (qsizetype i = 0; i < whole_; ++i) {
            const PageDrawing& page = held_[i];
            // A printer keeps the paper of its dialog unless the document gave the page's size.
            if (!ownPaper_ || page.sized) device_->setPageLayout(layoutFor(page.size));
            if (!painter_.isActive() ? !painter_.begin(device_) : !device_->newPage()) return fail();
            painter_.resetTransform();
            painter_.scale(device_->logicalDpiX() / kTwipsPerInch, device_->logicalDpiY() / kTwipsPerInch);
            page.paint(painter_);
            ++put_;
        }
        held_.remove(0, whole_);
        whole_ = 0;
        return true;
    }
    bool fail()
    {
        error_ = QStringLiteral("エラー：ページを出力できませんでした。");
        return false;
    }
    QPagedPaintDevice* device_;
    QPainter painter_;
    bool ownPaper_;
    bool holdRun_;
    QList<PageDrawing> held_;
    qsizetype whole_ = 0;
    int put_ = 0;
    bool ok_ = true;
};

class PdfOutput : public PageOutput {
public:
    explicit PdfOutput(const QString& path) : path_(path), file_(path) {}
    ~PdfOutput() override { abandon(); }

    bool open(QString* error)
    {
        if (!file_.open(QIODevice::WriteOnly)) {
            if (error) *error = cannotWrite();
            return false;
        }
        // The pages are made in memory: the finished file is put right before it is written.
        buffer_.open(QIODevice::WriteOnly);
        writer_ = std::make_unique<QPdfWriter>(&buffer_);
        writer_->setResolution(int(kTwipsPerInch));
        writer_->setCreator(QStringLiteral("Velmora"));
        writer_->setTitle(QFileInfo(path_).completeBaseName());
        surface_ = std::make_unique<PagedSurface>(writer_.get(), false, false);
        return true;
    }
    PageSurface* surface() override { return surface_.get(); }
    int pages() const override { return surface_ ? surface_->pages() : pages_; }
    bool finish(QString* error) override
    {
        if (done_) return true;
        if (pages() == 0) {
            abandon();
            if (error) *error = QStringLiteral("印刷するページがありません。PDFファイルは作成しませんでした。");
            return false;
        }
        pages_ = pages();
        const bool put = surface_->finish();
        const QString why = surface_->errorText();
        surface_.reset();
        writer_.reset();
        QByteArray pdf = buffer_.buffer();
        buffer_.close();
        if (!put) {
            abandon();
            if (error) *error = why;
            return false;
        }
        fixPdfToUnicode(pdf);
        if (file_.write(pdf) != pdf.size() || !file_.commit()) {
            if (error) *error = cannotWrite();
            done_ = true;
            return false;
        }
        done_ = true;
        return true;
    }
    void abandon() override
    {
        if (done_) return;
        done_ = true;
        if (surface_) pages_ = surface_->pages();
        surface_.reset();
        writer_.reset();
        file_.cancelWriting();
        file_.commit();   // after cancelWriting: removes the temporary file, writes nothing
    }

private:
    QString cannotWrite() const
    {
        return QStringLiteral("エラー：PDFファイルを書き込めませんでした。（%1）%2").arg(path_, fileWriteReason(path_));
    }
    QString path_;
    QSaveFile file_;
    QBuffer buffer_;
    std::unique_ptr<QPdfWriter> writer_;
    int pages_ = 0;
    std::unique_ptr<PagedSurface> surface_;
    bool done_ = false;
};

class PrinterOutput : public PageOutput {
public:
    explicit PrinterOutput(std::unique_ptr<QPrinter> printer) : owned_(std::move(printer)), printer_(owned_.get())
    {
        surface_ = std::make_unique<PagedSurface>(printer_, true, true);
    }
    explicit PrinterOutput(QPrinter& printer) : printer_(&printer)
    {
        printer_->setFullPage(true);
        surface_ = std::make_unique<PagedSurface>(printer_, true, true);
    }
    ~PrinterOutput() override { abandon(); }
    PageSurface* surface() override { return surface_.get(); }
    int pages() const override { return surface_ ? surface_->pages() : pages_; }
    bool finish(QString* error) override
    {
        if (!surface_) return true;
        pages_ = surface_->pages();
        // The job goes out when the painter ends: the last page with it.
        const bool put = surface_->finish();
        surface_.reset();
        if (!put || printer_->printerState() == QPrinter::Error) {
            if (error) *error = QStringLiteral("エラー：印刷できませんでした。プリンタを確かめてください。");
            return false;
        }
        // The print dialog's PDF file gets its text put right as our own PDF files do.
        if (pages_ > 0 && printer_->outputFormat() == QPrinter::PdfFormat && !printer_->outputFileName().isEmpty())
            fixPdfFile(printer_->outputFileName());
        return true;
    }
    // Nothing of a failed run reaches the paper: its pages were held, and are dropped.
    void abandon() override { surface_.reset(); }

private:
    std::unique_ptr<QPrinter> owned_;
    QPrinter* printer_;
    std::unique_ptr<PagedSurface> surface_;
    int pages_ = 0;
};

}  // namespace

std::unique_ptr<PageOutput> makePdfOutput(const QString& file, QString* error)
{
    auto out = std::make_unique<PdfOutput>(file);
    if (!out->open(error)) return nullptr;
    return out;
}

void setPrinterChooser(std::function<bool(QPrinter&)> chooser) { printerChooser() = std::move(chooser); }

std::unique_ptr<PageOutput> makePrinterOutput(QWidget* parent)
{
    auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    printer->setFullPage(true);
    if (printerChooser()) {
        if (!printerChooser()(*printer)) return nullptr;
    } else if (QGuiApplication::platformName() != QLatin1String("offscreen")) {
        // Nobody could answer a dialog on the offscreen platform: the default printer is taken.
        QPrintDialog dialog(printer.get(), parent);
        if (dialog.exec() != QDialog::Accepted) return nullptr;
    }
    return std::make_unique<PrinterOutput>(std::move(printer));
}

std::unique_ptr<PageOutput> makePrinterOutput(QPrinter& printer) { return std::make_unique<PrinterOutput>(printer); }

std::unique_ptr<PageOutput> makeReportOutput(QWidget* parent)
{
    return session().PreviewMode ? makePreviewOutput(parent) : makePrinterOutput(parent);
}

double pageTextWidth(const QString& fontName, double points, const QString& text)
{
    QFont f = pageFont(fontName, 10);
    f.setPixelSize(qMax(1, qRound(points * 20)));
    return QFontMetricsF(f).horizontalAdvance(text);
}
