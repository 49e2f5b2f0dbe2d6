// doctest itself, which every test program links.
#define DOCTEST_CONFIG_IMPLEMENT
#include <doctest/doctest.h>
