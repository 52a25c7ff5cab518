// The one main of the widget tests: a QApplication, offscreen unless the environment names
// another platform.

#include <QApplication>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    if (qgetenv("QT_QPA_PLATFORM").isEmpty()) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
