/// What an action returns, as text ("" for void), or the message of the Failure it throws.
#pragma once

#include <string>

#include "utility/exception.h"

template <class Failure = mox::Exception, class Action>
std::string ResultText(const Action& action) try {
    if constexpr (requires { std::to_string(action()); }) return std::to_string(action());
    action();
    return "";
} catch (const Failure& failure) {
    return failure.what();
}
