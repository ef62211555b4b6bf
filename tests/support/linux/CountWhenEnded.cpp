// In a coverage build: a program that somebody ends notes all the same which lines it ran.
#include <csignal>
#include <cstdlib>

extern "C" void __gcov_dump();

namespace {

[[maybe_unused]] const auto before = std::signal(SIGTERM, [](int) {
    __gcov_dump();
    std::_Exit(EXIT_FAILURE);
});

} // namespace
