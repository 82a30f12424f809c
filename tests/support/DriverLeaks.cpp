// For the leak detector, in sanitised builds. The software driver keeps a picture for each context and window
// that is destroyed, EGL its displays, and the desktop bus its first message; none of it belongs to the
// program.

// NOLINTBEGIN(bugprone-reserved-identifier): the detector looks for these names
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_options();
extern "C" const char* __asan_default_options();

extern "C" const char* __lsan_default_suppressions() {
    return "leak:swrast_dri.so\nleak:libEGL_mesa.so\nleak:libdbus-1.so\n";
}

/// What was suppressed is not told: standard error belongs to the program.
extern "C" const char* __lsan_default_options() {
    return "print_suppressions=0";
}
/// The sanitiser's own list of the thread-local data of loaded libraries can name data that are gone, and the
/// leak detector, which follows it, then crashes.
extern "C" const char* __asan_default_options() {
    return "intercept_tls_get_addr=0";
}
// NOLINTEND(bugprone-reserved-identifier)
