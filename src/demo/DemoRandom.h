#pragma once
// The demo company's dice. The draws are written out here rather than taken from the standard
// distributions, whose results differ between libraries: a seed gives the same company on
// every machine.
#include <cstdint>
#include <random>

class DemoRandom {
public:
    explicit DemoRandom(uint64_t seed) : gen_(seed) {}

    // 0 .. n-1 without bias (n 0 or 1 gives 0).
    uint64_t below(uint64_t n)
    {
        if (n <= 1) return 0;
        // Reject the low end of the range that does not divide evenly by n.
        const uint64_t floor = (0 - n) % n;
        for (;;) {
            const uint64_t r = gen_();
            if (r >= floor) return r % n;
        }
    }
    // lo .. hi, both included; lo when hi < lo.
    int range(int lo, int hi)
    {
        if (hi <= lo) return lo;
        return lo + static_cast<int>(below(static_cast<uint64_t>(hi - lo) + 1));
    }
    // True `num` times out of `den`.
    bool chance(int num, int den) { return static_cast<int>(below(static_cast<uint64_t>(den))) < num; }
    // An index into `weights` (n entries, not all zero), each chosen by its share of the sum.
    int weighted(const int* weights, int n)
    {
        int total = 0;
        for (int i = 0; i < n; ++i) total += weights[i];
        int r = static_cast<int>(below(static_cast<uint64_t>(total)));
        for (int i = 0; i < n; ++i) {
            if (r < weights[i]) return i;
            r -= weights[i];
        }
        return n - 1;
    }
    template <int N>
    int weighted(const int (&weights)[N]) { return weighted(weights, N); }

private:
    std::mt19937_64 gen_;
};
