// random_node.h - configurations for tests.
#pragma once

#include "objects/configuration.h"

// A configuration that breaks no rule, with objects of every class that its switch mode has; the same for a seed.
tool::Configuration RandomNode(unsigned seed);
