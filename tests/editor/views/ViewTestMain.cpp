#include <QApplication>

#include <gtest/gtest.h>

// The tests draw on the offscreen platform whatever the environment says, so that they look the
// same everywhere and no window of theirs takes the focus of a desktop.
int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
