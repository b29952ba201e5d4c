// kesto-make-job SIZE SEED DIR [--no-outlines] [--crowded] [--journal N]: writes a whole
// generated installation of SIZE parts into DIR (the densest shape: twelve processes, 16 x 10
// cells) and prints the command that runs kesto-batch on it, so that anyone can time the
// largest jobs by hand; with --journal, also DIR/job.journal: N random commands of an operator
// for kesto-batch --replay.
#include <charconv>
#include <cstdio>
#include <cstring>
#include <exception>
#include <filesystem>
#include <string>
#include <vector>

#include "JobGenerator.h"
#include "JournalGenerator.h"
#include "session/JobJournal.h"

namespace {

bool ParseInt(const char* text, long long low, long long high, long long& value) {
    const char* end = text + std::strlen(text);
    const auto [ptr, ec] = std::from_chars(text, end, value);
    return ec == std::errc() && ptr == end && value >= low && value <= high;
}

int Usage() {
    std::fputs(
        "usage: kesto-make-job SIZE SEED DIR [--no-outlines] [--crowded] [--journal N]\n"
        "  SIZE  parts of the job, 0 to 1000000 (the lists take at most 999)\n"
        "  SEED  seed of the generator, 0 to 4294967295\n"
        "  DIR   folder that becomes the system folder (created when missing)\n"
        "  --no-outlines  no outline file, none named in the job\n"
        "  --crowded      five times the quantities (parts left short, message 208) and\n"
        "                 every seventh outline file missing\n"
        "  --journal N    also DIR/job.journal: N random commands (drops, set-asides, sheet\n"
        "                 counts, undo, views, ...) drawn on the job with SEED, 0 to 100000\n",
        stderr);
    return 2;
}

// The commands drawn on a start of the installation (in its folder, as the window runs), under
// the job's identity.
bool WriteJournal(const kesto::Installation& inst, uint32_t seed, int commands,
                  const std::string& file) {
    const std::filesystem::path here = std::filesystem::current_path();
    std::filesystem::current_path(inst.Root);
    kesto::HeadlessJob job(inst);
    std::vector<kesto::JournalCommand> drawn;
    if (job.Started()) {
        drawn = kesto::RandomJournal(job.Session(), job.Area(), job.Relay(),
                                     {.Seed = seed, .Commands = commands});
    }
    const std::string text = kesto::JournalTextOf(kesto::JobIdentityOf(job.Session()), drawn);
    std::filesystem::current_path(here);
    std::FILE* out = std::fopen(file.c_str(), "wb");
    const bool written =
        out != nullptr && std::fwrite(text.data(), 1, text.size(), out) == text.size();
    if (out == nullptr || std::fclose(out) != 0 || !written) {
        std::fprintf(stderr, "kesto-make-job: %s cannot be written\n", file.c_str());
        return false;
    }
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    long long size = 0, seed = 0;
    long long journal = -1;
    bool outlines = true, crowded = false;
    for (int i = 4; i < argc; ++i) {
        if (std::strcmp(argv[i], "--no-outlines") == 0)
            outlines = false;
        else if (std::strcmp(argv[i], "--crowded") == 0)
            crowded = true;
        else if (std::strcmp(argv[i], "--journal") == 0 && i + 1 < argc &&
                 ParseInt(argv[i + 1], 0, 100000, journal))
            ++i;
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
        std::string replay;
        if (journal >= 0) {
            const std::string file = (dir / "job.journal").string();
            if (!WriteJournal(inst, static_cast<uint32_t>(seed), static_cast<int>(journal), file))
                return 1;
            replay = "--replay '" + file + "' ";
        }
        std::printf("cd '%s' && ORVOSystemRoot='%s' kesto-batch --answer ok %s%s\n",
                    inst.Root.c_str(), inst.Root.c_str(), replay.c_str(),
                    inst.CommandLine.substr(inst.CommandLine.find(' ') + 1).c_str());
    } catch (const std::exception& e) {
        std::fprintf(stderr, "kesto-make-job: %s\n", e.what());
        return 1;
    }
    return 0;
}
