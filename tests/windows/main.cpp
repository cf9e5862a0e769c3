#include <QApplication>

#include <gtest/gtest.h>

#include <cstdlib>
#include <unistd.h>

/// Asked by the address sanitizer at its start. The web engine deletes some of its objects by another size
/// than it made them with, which is its own affair.
extern "C" const char*
__asan_default_options() { // NOLINT(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
    return "new_delete_type_mismatch=0";
}

/// The program refuses to run where the decimal separator is a comma, as it is where its users are. So the
/// tests run in a locale of their own, which is read before main begins. A test about the separator chooses
/// the locale of the process that it starts.
static void chooseLocale(char** argv) {
    if (!qEnvironmentVariableIsSet("TV_LOCAL_DO_TESTE") && qgetenv("LC_ALL") != "C.UTF-8") {
        qputenv("LC_ALL", "C.UTF-8");
        ::execv("/proc/self/exe", argv);
    }
}

/// The application in which all window tests run: offscreen, in the plain style, with nothing of the user's.
int main(int argc, char** argv) {
    chooseLocale(argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    ::testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    QApplication::setStyle(QStringLiteral("fusion"));
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
