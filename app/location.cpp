#include "app/location.h"

#include <boost/algorithm/string/classification.hpp>
#include <boost/algorithm/string/split.hpp>

#include "app/log.h"
#include "utility/exception.h"
#include "utility/file.h"

std::vector<std::string> SplitAtColons(const std::string& list) {
    std::vector<std::string> pieces;
    boost::algorithm::split(pieces, list, boost::algorithm::is_any_of(":"),
                            boost::algorithm::token_compress_on);
    return pieces;
}

std::string FindLocation(const std::string& list) {
    for (const std::string& candidate : SplitAtColons(list)) {
        log("Checking config location path \"%s\"...", candidate.c_str());
        if (mox::File::IsFileExist(candidate.c_str())) return candidate;
    }
    throw mox::Exception("Location not found");
}
