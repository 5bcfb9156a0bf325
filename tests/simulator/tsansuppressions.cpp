// SPDX-License-Identifier: GPL-3.0-or-later
// What the thread sanitizer is told to leave out: the locks inside the Qt libraries, which are built without
// it, so that it sees their waits but not what they order. Our own code stays under it whoever calls it.

extern "C" const char *__tsan_default_suppressions();

extern "C" const char *__tsan_default_suppressions()
{
    return "called_from_lib:libQt5Core.so\n"
           "called_from_lib:libQt5Test.so\n";
}
