#include "utility/config_syntax.h"

#include <algorithm>
#include <memory>

namespace mox {

namespace {

std::string_view Trim(std::string_view text, std::string_view characters) {
    text.remove_prefix(std::min(text.find_first_not_of(characters), text.size()));
    return text.substr(0, text.find_last_not_of(characters) + 1);
}

/// Truncates text at its comment and unescapes both. Returns the comment, empty if none.
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

}  // namespace

Properties::PropertyPtr ReadConfigLine(std::string_view line, unsigned long lineNumber) {
    const std::string none;
    auto record = std::make_shared<Properties::Property>(none, none, none, lineNumber);
    // Line endings first: TakeComment replaces "##" by a carriage return temporarily.
    std::string_view text = Trim(line, "\r\n");
    std::string unescaped;
    // Most lines need no unescaping, hence no copy.
    if (text.find('#') != text.npos || text.find('\r') != text.npos) {
        unescaped = text;
        record->comment = TakeComment(unescaped);
        text = unescaped;
    }
    text = Trim(text, whiteSpace);
    if (text.empty()) {
        record->name = '\n' + std::to_string(lineNumber);
        record->value = line;
        return record;
    }

    const std::size_t equals = text.find('=');
    if (equals == text.npos) return nullptr;
    record->name = Trim(text.substr(0, equals), whiteSpace);
    record->value = Trim(text.substr(equals + 1), whiteSpace);
    return record->name.empty() ? nullptr : record;
}

std::string WriteConfigLine(const Properties::Property& record) {
    std::string line;
    const bool isPlaceholder = record.name.starts_with('\n');
    if (!isPlaceholder) {
        line = record.name + "=" + record.value;
        Properties::Mask(line);
    }
    if (!record.comment.empty() && record.comment != "\n") {
        if (!line.empty()) line += ' ';
        line += '#';
        // Directly after the first, a "#" would be read as "##".
        if (record.comment.starts_with('#')) line += ' ';
        line += record.comment;
    }
    line += '\n';
    return line;
}

}  // namespace mox
