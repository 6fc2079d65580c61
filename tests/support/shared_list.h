// What threads tell a test.
#pragma once

#include <mutex>
#include <utility>
#include <vector>

namespace verbatix::test {

template <typename T>
class SharedList {
  public:
    void Add(T value) {
        const std::lock_guard lock(mutex_);
        values_.push_back(std::move(value));
    }
    std::vector<T> All() const {
        const std::lock_guard lock(mutex_);
        return values_;
    }
    // What has come since the last call.
    std::vector<T> Take() {
        const std::lock_guard lock(mutex_);
        return std::exchange(values_, {});
    }

  private:
    mutable std::mutex mutex_;
    std::vector<T> values_;
};

}  // namespace verbatix::test
