#include <oravane/PoTimeAxis.h>
TEST_PLACEHOLDER
