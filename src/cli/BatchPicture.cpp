#include "cli/BatchPicture.h"

#include <algorithm>
#include <atomic>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <ostream>
#include <sstream>

#include "cli/ProgramRun.h"
#include "session/JobSession.h"
#include "sheet/PlacementPicture.h"
#include "sheet/SortSheet.h"
#include "support/TextFormat.h"

#ifdef _WIN32
#include <process.h>
#else
#include <unistd.h>
#endif

namespace kesto {

namespace {

std::optional<int32_t> ParseSide(const std::string& text) {
    if (text.empty() || text.size() > 5 ||
        !std::all_of(text.begin(), text.end(), [](unsigned char c) { return std::isdigit(c); }))
        return std::nullopt;
    const int32_t value = std::stoi(text);
    if (value < kPictureSideMin || value > kPictureSideMax)
        return std::nullopt;
    return value;
}

int ProcessId() {
#ifdef _WIN32
    return _getpid();
#else
    return static_cast<int>(getpid());
#endif
}

// A file of its own per run, so that runs side by side never share one.
std::filesystem::path TemporaryFile(const std::string& suffix) {
    static std::atomic<int> counter{0};
    std::error_code ec;
    std::filesystem::path folder = std::filesystem::temp_directory_path(ec);
    if (ec)
        folder = ".";
    return folder / FormatText("kesto-picture-%d-%d%s", ProcessId(), ++counter, suffix.c_str());
}

// The picture program's own messages (the lines it starts with its name); everything it
// wrote when it has none.
std::string ReadMessage(const std::filesystem::path& file) {
    const std::string prefix = "kesto-picture: ";
    std::ifstream in(file, std::ios::binary);
    std::string own;
    std::string all;
    for (std::string line; std::getline(in, line);) {
        while (!line.empty() && std::isspace(static_cast<unsigned char>(line.back())))
            line.pop_back();
        if (line.empty())
            continue;
        std::string& text = line.rfind(prefix, 0) == 0 ? own : all;
        text += (text.empty() ? "" : "; ") +
                (line.rfind(prefix, 0) == 0 ? line.substr(prefix.size()) : line);
    }
    return own.empty() ? all : own;
}

// Paints the document through the picture program; the empty text on success.
std::string PaintDocument(const PictureDocument& document, const std::string& output,
                          const std::string& program) {
    const std::filesystem::path documentFile = TemporaryFile(".txt");
    const std::filesystem::path errorFile = TemporaryFile(".err");
    {
        std::ofstream file(documentFile, std::ios::binary);
        WritePictureDocument(document, file);
        if (!file.flush())
            return "cannot write " + documentFile.string();
    }
    const ProgramResult run =
        RunProgram(program, {documentFile.string(), output}, errorFile.string());
    const std::string message = ReadMessage(errorFile);
    std::error_code ec;
    std::filesystem::remove(documentFile, ec);
    std::filesystem::remove(errorFile, ec);
    if (!run.Error.empty())
        return run.Error;
    if (run.ExitCode != 0) {
        return !message.empty()
                   ? message
                   : FormatText("%s ended with exit code %d", program.c_str(), run.ExitCode);
    }
    return "";
}

}  // namespace

std::optional<std::pair<int32_t, int32_t>> ParsePictureSize(const std::string& text) {
    const size_t x = text.find_first_of("xX");
    if (x == std::string::npos)
        return std::nullopt;
    const std::optional<int32_t> width = ParseSide(text.substr(0, x));
    const std::optional<int32_t> height = ParseSide(text.substr(x + 1));
    if (!width || !height)
        return std::nullopt;
    return std::make_pair(*width, *height);
}

bool WriteBatchPictures(JobSession& session, const PictureRequest& request,
                        const std::string& pictureProgram, std::ostream& out, std::ostream& err) {
    const bool pdf = PictureFormatOf(request.Output) == PictureFormat::Pdf;
    // A PDF is for paper: the sort sheet, as the window prints it. PNG images are the
    // screen's pictures, with their listing.
    const PictureDocument document =
        pdf ? BuildSortSheet(session)
            : BuildPlacementPictures(session.App(), session.Shown(), session.Svc(),
                                     PictureJobName(session), request.Width, request.Height);
    out.flush();
    const std::string error = PaintDocument(document, request.Output, pictureProgram);
    if (!error.empty()) {
        err << "kesto-batch: picture not written: " << error << "\n";
        return false;
    }
    const std::vector<std::string> files = PictureFiles(request.Output, document.Pages.size());
    out << (pdf ? FormatText("Picture (%d pages):\n", static_cast<int>(document.Pages.size()))
                : "Pictures:\n");
    for (const std::string& file : files)
        out << "  " << file << "\n";
    return true;
}

}  // namespace kesto
