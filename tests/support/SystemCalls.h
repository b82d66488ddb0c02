// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <vector>

/// Watches the calls with which this process makes and replaces files, and refuses some of them.
/// The calls are: "open nameless", "open new", "write", "link", "exchange", "rename", "flush file",
/// "flush folder", "lock file", "lock folder". One object at a time.
class SystemCalls
{
public:
    /// Says whether to refuse a call: with 0 it is made, and another number is the error that it
    /// ends with.
    using Judge = std::function<int(const std::string& call)>;

    explicit SystemCalls(Judge judge = nullptr);
    ~SystemCalls();
    SystemCalls(const SystemCalls&) = delete;
    SystemCalls& operator=(const SystemCalls&) = delete;

    /// The calls until now, the refused ones too.
    std::vector<std::string> made;

    /// Called for each call, before it is made. False, with errno set, when it is refused.
    static bool Permit(const std::string& call);

private:
    Judge judge_;
};
