#pragma once
// Where documents go. The caller opens an output (printer, preview or PDF, made by the UI
// library, or a recording one in tests), makes it current for the length of a run, and
// finishes it: several documents in a row (the invoice run) go to one output, so one PDF holds
// them all in run order.
#include <QString>
#include <functional>

class PageSurface;

class PageOutput {
public:
    virtual ~PageOutput() = default;
    // The surface the next page is drawn on; the same object for every page of the output.
    virtual PageSurface* surface() = 0;
    // Ends the output: the last page comes out, a file is closed. False and *error on failure
    // (a PDF that cannot be written leaves no half file).
    virtual bool finish(QString* error) = 0;
    // Ends the output after a failed run: nothing of the run comes out, no file, no page on
    // the printer. Also what the destructor does without finish().
    virtual void abandon() {}
    // Pages ended so far.
    virtual int pages() const = 0;
};

// The output of the documents printed now; nullptr means none: VtmlPrint then fails with a
// clear message.
PageOutput* currentPageOutput();
void setCurrentPageOutput(PageOutput* out);

// Makes an output current for a scope and restores the previous one.
class ScopedPageOutput {
public:
    explicit ScopedPageOutput(PageOutput* out) : prev_(currentPageOutput()) { setCurrentPageOutput(out); }
    ~ScopedPageOutput() { setCurrentPageOutput(prev_); }
    ScopedPageOutput(const ScopedPageOutput&) = delete;
    ScopedPageOutput& operator=(const ScopedPageOutput&) = delete;
private:
    PageOutput* prev_;
};

// Draws the documents of `draw` on `out` (current for that time), then finishes the output,
// or abandons it when `draw` returned false. A failed document has already been told by
// VtmlPrint; a failure to finish (printer error, file not written) is told here. True when
// everything came out.
bool printTo(PageOutput& out, const std::function<bool()>& draw);

// Why a file could not be written at `path`, in the clerk's words: a missing folder, no
// permission, a folder of that name, else a full disk or a file in use.
QString fileWriteReason(const QString& path);
