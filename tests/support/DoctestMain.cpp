// Both names, since the header may have been read before, precompiled: then the second no longer
// brings the first.
#define DOCTEST_CONFIG_IMPLEMENT
#define DOCTEST_CONFIG_IMPLEMENT_WITH_MAIN
#include <doctest/doctest.h>
