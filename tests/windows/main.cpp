#include <QApplication>

#include <gtest/gtest.h>

#include <cstdlib>

/// Asked by the address sanitizer at its start. The web engine deletes some of its objects by another size
/// than it made them with, which is its own affair.
extern "C" const char*
__asan_default_options() { // NOLINT(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
    return "new_delete_type_mismatch=0";
}

/// The application in which all window tests run: offscreen, in the plain style, with nothing of the user's.
int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    ::testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    QApplication::setStyle(QStringLiteral("fusion"));
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
