// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// JSON texts read strictly by the grammar.

#include <string>
#include <vector>

/// A value.
struct Json
{
    enum Kind
    {
        null,
        boolean,
        number,
        text,
        array,
        object
    };

    /// Throws std::runtime_error, naming the place, for anything but one JSON text in UTF-8.
    static Json Parse(const std::string& source);

    /// A member of an object. Throws std::runtime_error when there is none.
    const Json& operator[](const char* key) const;
    /// An element of an array. Throws when there is none.
    const Json& operator[](int index) const;
    bool Has(const char* key) const;
    int Size() const;
    /// The numbers of an array.
    std::vector<double> Numbers() const;
    /// The keys of an object, in order.
    std::vector<std::string> Keys() const;

    struct Member;

    Kind kind = null;
    bool yes = false;
    double value = 0;
    std::string string;  // UTF-8
    std::vector<Json> elements;
    std::vector<Member> members;
};

struct Json::Member
{
    std::string key;
    Json value;
};
