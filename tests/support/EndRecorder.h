#pragma once
// Counts the ends of the program instead of ending it, for the test's lifetime.
#include <functional>
#include "shell/QtMenuRun.h"

struct EndRecorder {
    int count = 0;
    std::function<void()> prev;
    EndRecorder() { prev = setEndProgram([this] { ++count; }); }
    ~EndRecorder() { setEndProgram(prev); }
};
