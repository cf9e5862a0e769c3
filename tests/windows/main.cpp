#include <QApplication>

#include <gtest/gtest.h>

#include <cstdlib>

/// The application in which all window tests run: offscreen, in the plain style, with nothing of the user's.
int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    ::testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    QApplication::setStyle(QStringLiteral("fusion"));
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
