/// An action's answer as text: its number, "" if it has none, or the message of its Failure.
#pragma once

#include <string>
#include <type_traits>

#include "utility/exception.h"

template <class Failure = mox::Exception, class Action>
std::string ResultText(const Action& action) try {
    if constexpr (!std::is_void_v<decltype(action())>) return std::to_string(action());
    action();
    return "";
} catch (const Failure& failure) {
    return failure.what();
}
