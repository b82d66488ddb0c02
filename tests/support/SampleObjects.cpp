// SPDX-License-Identifier: MIT
#include "tests/support/SampleObjects.h"

IMPLEMENT_SERIAL(SampleLeaf, CObject, 1)
IMPLEMENT_SERIAL(SampleBud, SampleLeaf, 1)
IMPLEMENT_SERIAL(SampleNode, CObject, VERSIONABLE_SCHEMA | 3)
IMPLEMENT_DYNAMIC(SampleAbstract, CObject)

int SampleLeaf::alive = 0;
int SampleNode::alive = 0;
