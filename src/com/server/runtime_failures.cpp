// What the C++ run-time does about failures that our code never causes on purpose. Its own functions bring 120 KB into
// the DLL: the texts of their exceptions with two kinds of strings, and a printer of type names.

#include <cstdlib>
#include <exception>
#include <new>
#include <string>

// In place of the run-time's own functions of the same names.

/// An exception that nobody catches ends the process without a word: the host's error stream is not ours.
void __gnu_cxx::__verbose_terminate_handler() {
    std::abort();
}

/// Containers and strings call these. Our edges turn every exception into the same failure, whatever its text.
namespace std {

void __throw_bad_alloc() {
    throw bad_alloc();
}
void __throw_bad_array_new_length() {
    throw bad_alloc();
}
void __throw_bad_cast() {
    throw exception();
}
void __throw_bad_exception() {
    throw exception();
}
void __throw_bad_typeid() {
    throw exception();
}
void __throw_domain_error(const char*) {
    throw exception();
}
void __throw_invalid_argument(const char*) {
    throw exception();
}
void __throw_length_error(const char*) {
    throw exception();
}
void __throw_logic_error(const char*) {
    throw exception();
}
void __throw_out_of_range(const char*) {
    throw exception();
}
void __throw_out_of_range_fmt(const char*, ...) {
    throw exception();
}
void __throw_overflow_error(const char*) {
    throw exception();
}
void __throw_range_error(const char*) {
    throw exception();
}
void __throw_runtime_error(const char*) {
    throw exception();
}
void __throw_underflow_error(const char*) {
    throw exception();
}

}  // namespace std
