// Reads back what a test needs of a PDF written by the picture writer: its pages and the
// length of each page's content stream (the drawing, compressed).
#pragma once

#include <cstdlib>
#include <string>
#include <vector>

#include "common/TestFiles.h"

namespace kesto::test {

class PdfPages {
  public:
    explicit PdfPages(const std::string& path) : text_(ReadFile(path)) {
        const std::string page = "/Type /Page";
        for (size_t at = text_.find(page); at != std::string::npos; at = text_.find(page, at + 1)) {
            if (at + page.size() < text_.size() && text_[at + page.size()] == 's')
                continue;  // the page tree, not a page
            const size_t end = text_.find("endobj", at);
            ContentLengths.push_back(
                StreamLength(Reference(text_.substr(at, end - at), "/Contents")));
        }
    }

    std::vector<size_t> ContentLengths;  // per page, in file order; 0 when not found

  private:
    // The object number of "key N 0 R" in a dictionary; -1 when absent.
    static long Reference(const std::string& dictionary, const std::string& key) {
        const size_t at = dictionary.find(key + " ");
        return at == std::string::npos
                   ? -1
                   : std::strtol(dictionary.c_str() + at + key.size(), nullptr, 10);
    }

    // The text of object n, from its dictionary to "endobj".
    std::string Object(long n) const {
        const std::string head = "\n" + std::to_string(n) + " 0 obj";
        const size_t at = text_.find(head);
        if (n < 0 || at == std::string::npos)
            return "";
        return text_.substr(at + head.size(), text_.find("endobj", at) - at - head.size());
    }

    // The /Length of stream object n, given directly or as a reference.
    size_t StreamLength(long n) const {
        const std::string object = Object(n);
        const size_t at = object.find("/Length ");
        if (at == std::string::npos)
            return 0;
        const char* value = object.c_str() + at + 8;
        char* rest = nullptr;
        const long number = std::strtol(value, &rest, 10);
        if (std::string(rest).rfind(" 0 R", 0) == 0)
            return static_cast<size_t>(std::strtol(Object(number).c_str(), nullptr, 10));
        return static_cast<size_t>(number);
    }

    std::string text_;
};

}  // namespace kesto::test
