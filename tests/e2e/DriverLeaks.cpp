// For the leak detector, in sanitised builds. On a desktop the software driver keeps the picture of each
// window that is destroyed, and the desktop bus its first message; neither belongs to the program.

// NOLINTBEGIN(bugprone-reserved-identifier): the detector looks for this name
extern "C" const char* __lsan_default_suppressions();

extern "C" const char* __lsan_default_suppressions() {
    return "leak:swrast_dri.so\nleak:libdbus-1.so\n";
}
// NOLINTEND(bugprone-reserved-identifier)
