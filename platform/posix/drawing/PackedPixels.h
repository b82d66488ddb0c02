// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Types.h"

#include <cstddef>
#include <vector>

namespace posix
{

/// Decodes a picture of run-length coded pixels (BI_RLE8, BI_RLE4) row by row, so that a picture of
/// any height takes the memory of one row.
class PackedRows
{
public:
    /// \param packed the code, borrowed. It is read up to the mark for the end of the picture or
    /// for \p size bytes, whichever comes first.
    PackedRows(int width, int height, const BYTE* packed, std::size_t size, bool isFourBit);

    /// The pixels of a row, one byte each, until the next call. Pixels that the code leaves out are
    /// 0, and pixels outside the picture are dropped. Rows are quick to get from the lowest up; a
    /// row below the last one is decoded from the start of the picture.
    /// \param y from the bottom.
    const BYTE* Row(int y);

private:
    /// Decodes one command. False at the end of the picture.
    bool Step();
    /// Puts pixels at the cursor, if it is in the wanted row, and moves the cursor.
    void Put(int count, const BYTE* source, bool isRun);
    void Skip(int right, int up);

    const int width_;
    const int height_;
    const bool isFourBit_;
    const BYTE* const begin_;
    const BYTE* const end_;
    const BYTE* next_;
    // The cursor: where the next pixel goes.
    int x_ = 0;
    int y_ = 0;
    int wanted_ = -1;  ///< the row in \c row_; -1 for none
    std::vector<BYTE> row_;
};

}  // namespace posix
