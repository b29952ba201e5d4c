// A generated job in which every part fits every pallet box, so that right has its chance.
#pragma once

#include "JobGenerator.h"

namespace kesto::test {

inline GeneratedJob WideBoxJob(const JobShape& shape) {
    GeneratedJob job = GenerateJob(shape);
    for (BoxInfo& box : job.Boxes) {
        if (box.No < 100)
            box.PartSizes = {0, 5000, 0, 5000};
    }
    return job;
}

}  // namespace kesto::test
