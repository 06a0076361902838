#pragma once
// Stopwatch: time of the processor, so that limits hold on a busy machine too.

#include <ctime>

namespace kv::test {

#if defined(__SANITIZE_ADDRESS__)
constexpr double kSlower = 10;
#else
constexpr double kSlower = 1;
#endif

class Stopwatch {
public:
    double cpu_ms() const { return double(std::clock() - from_) * 1000.0 / CLOCKS_PER_SEC; }

private:
    std::clock_t from_ = std::clock();
};

}  // namespace kv::test
