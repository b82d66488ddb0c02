// SPDX-License-Identifier: MIT
#include "tests/reliability/Refusals.h"

#include "tests/support/Allocations.h"

#include <execinfo.h>
#include <link.h>
#include <unistd.h>
#include <unwind.h>

#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <cstring>

// The linker puts these at the ends of the program's code, in which the library lies, too.
extern "C" char __executable_start;
extern "C" char etext;

namespace
{

std::atomic<bool> isArmed = false;
std::atomic<CallKind> armedKind = CallKind::Memory;
std::atomic<long> calls = 0;
std::atomic<long> refused = 0;
std::atomic<long> firstRefused = 0;
std::atomic<bool> refusesAllAfter = false;

struct AddressRange
{
    std::uintptr_t begin = 0;
    std::uintptr_t end = 0;

    bool Contains(std::uintptr_t address) const { return begin <= address && address < end; }
};

const AddressRange programCode = {reinterpret_cast<std::uintptr_t>(&__executable_start),
                                  reinterpret_cast<std::uintptr_t>(&etext)};

int FindStandardLibrary(dl_phdr_info* info, std::size_t, void* found)
{
    if (std::strstr(info->dlpi_name, "libstdc++.so") == nullptr)
    {
        return 0;
    }
    auto& range = *static_cast<AddressRange*>(found);
    for (int i = 0; i < info->dlpi_phnum; ++i)
    {
        const ElfW(Phdr)& segment = info->dlpi_phdr[i];
        if (segment.p_type == PT_LOAD && (segment.p_flags & PF_X) != 0)
        {
            range.begin = info->dlpi_addr + segment.p_vaddr;
            range.end = range.begin + segment.p_memsz;
        }
    }
    return 1;
}

const AddressRange& StandardLibraryCode()
{
    static const AddressRange range = [] {
        AddressRange found;
        dl_iterate_phdr(FindStandardLibrary, &found);
        return found;
    }();
    return range;
}

/// A walk from `new` up to the first function outside of the standard library.
struct Walk
{
    std::uintptr_t caller;  ///< of `new`
    bool isPastNew = false;
    std::uintptr_t found = 0;
};

_Unwind_Reason_Code Step(_Unwind_Context* context, void* state)
{
    auto& walk = *static_cast<Walk*>(state);
    const std::uintptr_t address = _Unwind_GetIP(context);
    walk.isPastNew = walk.isPastNew || address == walk.caller;
    if (!walk.isPastNew || StandardLibraryCode().Contains(address))
    {
        return _URC_NO_REASON;
    }
    walk.found = address;
    return _URC_END_OF_STACK;
}

/// Whether memory is asked for by this program. Much of it is asked for by the standard library in
/// the program's name: the functions of std::string are compiled there.
bool IsForProgram(const void* caller)
{
    const auto address = reinterpret_cast<std::uintptr_t>(caller);
    if (!StandardLibraryCode().Contains(address))
    {
        return programCode.Contains(address);
    }
    Walk walk{address};
    _Unwind_Backtrace(Step, &walk);
    return programCode.Contains(walk.found);
}

bool JudgeMemory(const void* caller)
{
    return isArmed && IsForProgram(caller) && Refusals::Refuse(CallKind::Memory);
}

}  // namespace

const char* NameOf(CallKind kind)
{
    switch (kind)
    {
        case CallKind::Memory:
            return "memory";
        case CallKind::Open:
            return "open";
        case CallKind::Read:
            return "read";
        case CallKind::Write:
            return "write";
        case CallKind::Flush:
            return "flush";
        case CallKind::Rename:
            return "rename";
        case CallKind::Mapping:
            return "mapping";
        case CallKind::Thread:
            return "thread";
        case CallKind::Context:
            return "context";
    }
    return "";
}

Refusals::Refusals(CallKind kind, long number, Extent extent)
{
    StandardLibraryCode();  // found before memory is refused
    calls = 0;
    refused = 0;
    armedKind = kind;
    firstRefused = number;
    refusesAllAfter = extent == Extent::AllFromThere;
    isArmed = true;
    SetMemoryJudge(kind == CallKind::Memory ? JudgeMemory : nullptr);
}

Refusals::~Refusals()
{
    SetMemoryJudge(nullptr);
    isArmed = false;
}

long Refusals::Refused()
{
    return refused;
}

bool Refusals::Refuse(CallKind kind)
{
    if (!isArmed || kind != armedKind)
    {
        return false;
    }
    const long number = ++calls;
    const bool isRefused = number == firstRefused || (number > firstRefused && refusesAllAfter);
    refused += isRefused ? 1 : 0;
    static const bool isTraced = std::getenv("ORVANE_FAULT_TRACE") != nullptr;
    if (isRefused && isTraced)
    {
        constexpr int mostFrames = 40;
        void* frames[mostFrames];
        backtrace_symbols_fd(frames, backtrace(frames, mostFrames), STDERR_FILENO);
    }
    return isRefused;
}
