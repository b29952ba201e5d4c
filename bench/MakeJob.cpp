// kesto-make-job SIZE SEED DIR [--no-outlines] [--crowded]: writes a whole generated
// installation of SIZE parts into DIR (the densest shape: twelve processes, 16 x 10 cells) and
// prints the command that runs kesto-batch on it, so that anyone can time the largest jobs by
// hand.
#include <charconv>
#include <cstdio>
#include <cstring>
#include <exception>
#include <filesystem>
#include <string>

#include "JobGenerator.h"

namespace {

bool ParseInt(const char* text, long long low, long long high, long long& value) {
    const char* end = text + std::strlen(text);
    const auto [ptr, ec] = std::from_chars(text, end, value);
    return ec == std::errc() && ptr == end && value >= low && value <= high;
}

int Usage() {
    std::fputs(
        "usage: kesto-make-job SIZE SEED DIR [--no-outlines] [--crowded]\n"
        "  SIZE  parts of the job, 0 to 1000000 (the lists take at most 999)\n"
        "  SEED  seed of the generator, 0 to 4294967295\n"
        "  DIR   folder that becomes the system folder (created when missing)\n"
        "  --no-outlines  no outline file, none named in the job\n"
        "  --crowded      five times the quantities (parts left short, message 208) and\n"
        "                 every seventh outline file missing\n",
        stderr);
    return 2;
}

}  // namespace

int main(int argc, char** argv) {
    long long size = 0, seed = 0;
    bool outlines = true, crowded = false;
    for (int i = 4; i < argc; ++i) {
        if (std::strcmp(argv[i], "--no-outlines") == 0)
            outlines = false;
        else if (std::strcmp(argv[i], "--crowded") == 0)
            crowded = true;
        else
            return Usage();
    }
    if (argc < 4 || !ParseInt(argv[1], 0, 1000000, size) ||
        !ParseInt(argv[2], 0, 4294967295LL, seed)) {
        return Usage();
    }
    kesto::JobShape shape = crowded ? kesto::CrowdedJobShape() : kesto::LargestJobShape();
    shape.Parts = static_cast<int>(size);
    shape.Seed = static_cast<uint32_t>(seed);
    kesto::InstallOptions options =
        crowded ? kesto::CrowdedInstallOptions() : kesto::InstallOptions{};
    options.OutlineFiles = outlines;
    try {
        const std::filesystem::path dir = std::filesystem::absolute(argv[3]);
        const kesto::Installation inst =
            kesto::WriteInstallation(dir.string(), kesto::GenerateJob(shape), options);
        std::printf("cd '%s' && ORVOSystemRoot='%s' kesto-batch --answer ok %s\n",
                    inst.Root.c_str(), inst.Root.c_str(),
                    inst.CommandLine.substr(inst.CommandLine.find(' ') + 1).c_str());
    } catch (const std::exception& e) {
        std::fprintf(stderr, "kesto-make-job: %s\n", e.what());
        return 1;
    }
    return 0;
}
