#include <oravane/PoBase.h>

#include <gtest/gtest.h>

#include <cstdlib>

// Every test program starts the library once. The toolkit's built-in font gives the same text on any machine.
int main(int argc, char **argv) {
    setenv("COIN_FORCE_FREETYPE_OFF", "1", 1);
    PoBase::init();
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
