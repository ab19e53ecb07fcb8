#include <boost/algorithm/string/replace.hpp>

#include "utility/properties.h"

namespace mox {

void Properties::Mask(std::string& text) { boost::algorithm::replace_all(text, "#", "##"); }

void Properties::Preunmask(std::string& text) { boost::algorithm::replace_all(text, "##", "\r"); }

void Properties::Unmask(std::string& text) { boost::algorithm::replace_all(text, "\r", "#"); }

}  // namespace mox
