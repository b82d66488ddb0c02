// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Export.h"

#include <stdexcept>
#include <string>

namespace orvane
{

/// Something could not be done. what() is "PLACE: PROBLEM", as in
/// "word.orv: byte 0: found 54 68, expected FF FF as scenes begin".
class ORVANE_API Error : public std::runtime_error
{
public:
    Error(const std::string& place, const std::string& problem);
    /// Problem() becomes "found FOUND, expected EXPECTED".
    Error(const std::string& place, std::string found, std::string expected);
    ~Error() override;
    Error(const Error&) = default;
    Error& operator=(const Error&) = default;

    /// The thing that has the problem: a file (with the byte, if it is known), a font, a line of a
    /// text, the field of an option, or OpenGL.
    const std::string& Place() const { return place_; }
    const std::string& Problem() const { return problem_; }
    /// The value that was found. Empty when the problem is not a difference between a found and an
    /// expected value.
    const std::string& Found() const { return found_; }
    /// The value that was expected. Empty when Found() is empty.
    const std::string& Expected() const { return expected_; }

protected:
    /// For derived classes that word the problem themselves.
    Error(const std::string& place, const std::string& problem, std::string found,
          std::string expected);

private:
    std::string place_;
    std::string problem_;
    std::string found_;
    std::string expected_;
};

/// A field of an option structure has a value that makes no sense. Place() is the name of the
/// field, and what() reads, for example, "samples: 0 to 4, found 9".
class ORVANE_API OptionError : public Error
{
public:
    OptionError(const std::string& field, const std::string& problem);
    /// Problem() becomes "EXPECTED, found FOUND".
    OptionError(const std::string& field, const std::string& expected, const std::string& found);
    ~OptionError() override;
    OptionError(const OptionError&) = default;
    OptionError& operator=(const OptionError&) = default;
};

/// A drawing was stopped through its Cancellation before it was complete.
class ORVANE_API Cancelled : public Error
{
public:
    explicit Cancelled(const std::string& place);
    ~Cancelled() override;
    Cancelled(const Cancelled&) = default;
    Cancelled& operator=(const Cancelled&) = default;
};

/// A picture costs more than a limit in its options allows. Found() is the cost, and Expected() the
/// limit.
class ORVANE_API LimitExceeded : public Error
{
public:
    /// \param limit the name of the option's field
    LimitExceeded(const std::string& place, std::string limit, const std::string& found,
                  const std::string& allowed);
    ~LimitExceeded() override;
    LimitExceeded(const LimitExceeded&) = default;
    LimitExceeded& operator=(const LimitExceeded&) = default;

    /// The name of the option's field, such as "maxPixels".
    const std::string& Limit() const { return limit_; }

private:
    std::string limit_;
};

}  // namespace orvane
