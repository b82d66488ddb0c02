// SPDX-License-Identifier: MIT
#include "orvane/Error.h"

#include <utility>

namespace orvane
{

Error::Error(const std::string& place, const std::string& problem) : Error(place, problem, "", "")
{}

Error::Error(const std::string& place, std::string found, std::string expected)
    : Error(place, "found " + found + ", expected " + expected, found, expected)
{}

Error::Error(const std::string& place, const std::string& problem, std::string found,
             std::string expected)
    : std::runtime_error(place.empty() ? problem : place + ": " + problem),
      place_(place),
      problem_(problem),
      found_(std::move(found)),
      expected_(std::move(expected))
{}

Error::~Error() = default;

OptionError::OptionError(const std::string& field, const std::string& problem)
    : Error(field, problem)
{}

OptionError::OptionError(const std::string& field, const std::string& expected,
                         const std::string& found)
    : Error(field, expected + ", found " + found, found, expected)
{}

OptionError::~OptionError() = default;

Cancelled::Cancelled(const std::string& place) : Error(place, "the drawing was cancelled") {}

Cancelled::~Cancelled() = default;

LimitExceeded::LimitExceeded(const std::string& place, std::string limit, const std::string& found,
                             const std::string& allowed)
    : Error(place, found + ", and " + limit + " allows " + allowed, found, allowed),
      limit_(std::move(limit))
{}

LimitExceeded::~LimitExceeded() = default;

}  // namespace orvane
