// One operation timed n times: its mean and its slowest run, printed on one line.
#pragma once
#include <algorithm>
#include <cstdio>
#include <QElapsedTimer>

template <class F> void timeEach(const char* what, int n, F f)
{
    double maxUs = 0;
    QElapsedTimer all;
    all.start();
    for (int i = 0; i < n; ++i) {
        QElapsedTimer one;
        one.start();
        f(i);
        maxUs = std::max(maxUs, one.nsecsElapsed() / 1000.0);
    }
    std::printf("  %-52s mean %9.1f us   max %9.1f us\n", what, all.nsecsElapsed() / 1000.0 / n, maxUs);
}
