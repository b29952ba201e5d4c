// The ids of stacks in hand, for comparing with what a selection holds.
#pragma once

#include <vector>

#include "app/JobModel.h"

namespace kesto::test {

template <class Stack>
std::vector<StackId> IdsOf(const std::vector<Stack*>& stacks) {
    std::vector<StackId> ids;
    for (const Stack* h : stacks)
        ids.push_back(h->Id);
    return ids;
}

}  // namespace kesto::test
