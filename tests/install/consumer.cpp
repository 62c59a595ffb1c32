#include <oravane/PbArrayOfInt.h>
#include <oravane/PoBase.h>

#include <cstdio>

// What a program outside of this project does: starts the library and uses a class of it.
int main() {
    PoBase::init();
    PbArrayOfInt levels(2, 2);
    levels += 12;
    levels += 5;
    levels.increasingSort();
    std::printf("%d %d\n", levels[0], levels[1]);
    return levels[0] == 5 && levels[1] == 12 ? 0 : 1;
}
