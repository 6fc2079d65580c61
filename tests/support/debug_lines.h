// What the program under test tells a debugger.
#pragma once

#include <string>
#include <vector>

namespace verbatix::test {

// Collects the debug lines of this process for as long as it lives; one at a time.
class DebugLines {
  public:
    DebugLines();
    ~DebugLines();
    DebugLines(const DebugLines&) = delete;
    DebugLines& operator=(const DebugLines&) = delete;

    const std::vector<std::wstring>& Seen() const { return seen_; }

  private:
    std::vector<std::wstring> seen_;
    void* handler_;
};

}  // namespace verbatix::test
