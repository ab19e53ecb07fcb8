#include <boost/algorithm/string/erase.hpp>
#include <boost/algorithm/string/replace.hpp>
#include <vector>

#include "utility/config_syntax.h"
#include "utility/exception.h"
#include "utility/properties.h"
#include "utility/string.h"

namespace mox {

void Properties::Mask(std::string& text) { boost::algorithm::replace_all(text, "#", "##"); }

void Properties::Preunmask(std::string& text) { boost::algorithm::replace_all(text, "##", "\r"); }

void Properties::Unmask(std::string& text) { boost::algorithm::replace_all(text, "\r", "#"); }

void Properties::Parse(const std::string& data) {
    std::vector<std::string> lines;
    String::Split(boost::algorithm::erase_all_copy(data, "\r"), "\n", lines);
    Clear();
    unsigned long number = 0;
    for (const std::string& line : lines) {
        const PropertyPtr record = ReadConfigLine(line, ++number);
        if (!record) {
            // The double space is part of the message.
            throw Exception("Properties: wrong data in config data  in line " +
                            std::to_string(number));
        }
        PutProperty(record);
    }
}

std::string Properties::GetAsDataFile() const {
    std::string text;
    for (const auto& [name, record] : propertyMap) text += name + '=' + record->value + '\n';
    return text;
}

}  // namespace mox
