#include <cstdio>
#include <QStringList>

// Filled by the demo company generator.
int runDemo(const QStringList&)
{
    std::fprintf(stderr, "demo: not available yet\n");
    return 1;
}
