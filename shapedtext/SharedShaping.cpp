// SPDX-License-Identifier: MIT
#include "shapedtext/SharedShaping.h"

#include <mutex>

namespace orvane
{

std::shared_ptr<SharedShaping> SharedShaping::Get()
{
    static std::mutex mutex;
    static std::weak_ptr<SharedShaping> current;
    const std::lock_guard<std::mutex> lock(mutex);
    std::shared_ptr<SharedShaping> shared = current.lock();
    if (shared == nullptr)
    {
        shared = std::make_shared<SharedShaping>();
        current = shared;
    }
    return shared;
}

}  // namespace orvane
