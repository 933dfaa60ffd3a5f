// How the program ends when it cannot go on: after an exception that nobody caught, or an index outside of a
// vector. The C++ library's own functions print to a console, which this program has not, and bring along what
// makes readable names of functions, some 100 KB.
#include <cstdlib>
#include <exception>

namespace std {

void __glibcxx_assert_fail(const char*, int, const char*, const char*) noexcept {
    abort();
}

}  // namespace std

namespace __gnu_cxx {

void __verbose_terminate_handler() {
    std::abort();
}

}  // namespace __gnu_cxx
