#include "pageout/PageOutput.h"
#include "shell/Dialogs.h"

namespace {
PageOutput* g_current = nullptr;
}

PageOutput* currentPageOutput() { return g_current; }

void setCurrentPageOutput(PageOutput* out) { g_current = out; }

bool printTo(PageOutput& out, const std::function<bool()>& draw)
{
    bool drawn = false;
    {
        ScopedPageOutput scope(&out);
        drawn = draw();
    }
    if (!drawn) {
        out.abandon();
        return false;
    }
    QString error;
    if (!out.finish(&error)) {
        if (!error.isEmpty()) Tell(error);
        return false;
    }
    return true;
}
