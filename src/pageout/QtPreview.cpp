// The preview window "printTest": one page at a time, modal, sized to the page.
#include <QDialog>
#include <QKeyEvent>
#include <QPainter>
#include "pageout/QtPageOutputs.h"
#include "pageout/QtPageSurface.h"

namespace {

constexpr double kTwipsPerInch = 1440;

std::function<void(QWidget*)>& previewHook()
{
    static std::function<void(QWidget*)> f;
    return f;
}

class PrintTestWindow : public QDialog {
public:
    PrintTestWindow(const PageDrawing& page, QWidget* parent) : QDialog(parent), page_(page)
    {
        setObjectName(QStringLiteral("printTest"));
        setWindowTitle(QStringLiteral("printTest"));
        setModal(true);
        setAutoFillBackground(false);
        // In twips, without zoom: the page as large as it is.
        setFixedSize(qRound(page.size.width() * logicalDpiX() / kTwipsPerInch),
                     qRound(page.size.height() * logicalDpiY() / kTwipsPerInch));
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter p(this);
        p.fillRect(rect(), Qt::white);
        p.setRenderHint(QPainter::Antialiasing);
        p.setRenderHint(QPainter::TextAntialiasing);
        p.scale(logicalDpiX() / kTwipsPerInch, logicalDpiY() / kTwipsPerInch);
        page_.paint(p);
    }
    // The window has no keys of its own: it closes by the window's own close only.
    void keyPressEvent(QKeyEvent* e) override { e->ignore(); }

private:
    PageDrawing page_;
};

class PreviewSurface : public QtPageSurface {
public:
    explicit PreviewSurface(QWidget* parent) : parent_(parent) {}
    bool isPreview() const override { return true; }

protected:
    bool emitPage(const PageDrawing& page) override
    {
        PrintTestWindow window(page, parent_);
        if (previewHook()) previewHook()(&window);
        window.exec();
        return true;
    }

private:
    QWidget* parent_;
};

class PreviewOutput : public PageOutput {
public:
    explicit PreviewOutput(QWidget* parent) : surface_(parent) {}
    PageSurface* surface() override { return &surface_; }
    bool finish(QString*) override { return true; }
    int pages() const override { return surface_.pagesEnded(); }

private:
    PreviewSurface surface_;
};

}  // namespace

void setPreviewPageHook(std::function<void(QWidget*)> hook) { previewHook() = std::move(hook); }

std::unique_ptr<PageOutput> makePreviewOutput(QWidget* parent) { return std::make_unique<PreviewOutput>(parent); }
