#include <oravane/PoBase.h>

#include <Inventor/SoDB.h>
#include <Inventor/SoInteraction.h>
#include <Inventor/nodekits/SoNodeKit.h>

void PoBase::init() {
    SoDB::init();
    SoNodeKit::init();
    SoInteraction::init();
}
