#include "utility/config_syntax.h"

#include <boost/algorithm/string/classification.hpp>
#include <boost/algorithm/string/trim.hpp>
#include <memory>

namespace mox {

namespace {

void TrimLineEnds(std::string& text) {
    boost::algorithm::trim_if(text, boost::algorithm::is_any_of("\r\n"));
}

void TrimSpace(std::string& text) {
    boost::algorithm::trim_if(text, boost::algorithm::is_any_of(whiteSpace));
}

/// Cuts text at the comment marker and unescapes both halves. Returns the comment, empty if none.
std::string TakeComment(std::string& text) {
    std::string comment;
    Properties::Preunmask(text);
    const std::size_t marker = text.find('#');
    if (marker != std::string::npos) {
        comment = text.substr(marker + 1);
        text.erase(marker);
        Properties::Unmask(comment);
    }
    Properties::Unmask(text);
    return comment;
}

bool IsPlaceholder(const Properties::Property& record) { return record.name.starts_with('\n'); }

}  // namespace

Properties::PropertyPtr ReadConfigLine(const std::string& line, unsigned long lineNumber) {
    std::string text = line;
    // The line ends go first: from TakeComment on, a carriage return stands for a "#".
    TrimLineEnds(text);
    const std::string comment = TakeComment(text);
    TrimSpace(text);
    if (text.empty()) {
        return std::make_shared<Properties::Property>('\n' + std::to_string(lineNumber), line,
                                                      comment, lineNumber);
    }

    const std::size_t equals = text.find('=');
    if (equals == std::string::npos) return nullptr;
    std::string name = text.substr(0, equals);
    std::string value = text.substr(equals + 1);
    TrimSpace(name);
    TrimSpace(value);
    if (name.empty()) return nullptr;
    return std::make_shared<Properties::Property>(name, value, comment, lineNumber);
}

std::string WriteConfigLine(const Properties::Property& record) {
    std::string line;
    if (!IsPlaceholder(record)) {
        line = record.name + "=" + record.value;
        Properties::Mask(line);
    }
    if (!record.comment.empty() && record.comment != "\n") {
        if (!line.empty()) line += ' ';
        line += '#';
        // Right behind the marker a "#" would read back as the second half of an escaped pair.
        if (record.comment.starts_with('#')) line += ' ';
        line += record.comment;
    }
    line += '\n';
    return line;
}

}  // namespace mox
