// What the program calls of Windows, in the place of which a test has something else called.
#pragma once

#include <windows.h>

namespace verbatix::test {

// Puts `replacement` into the import table, for as long as it lives. The entry of a function is the
// variable __imp_NAME, which the test declares extern "C".
template <typename Function>
class ImportPatch {
  public:
    ImportPatch(Function& entry, Function replacement) : entry_(entry), real_(entry) { Put(replacement); }
    ~ImportPatch() { Put(real_); }
    ImportPatch(const ImportPatch&) = delete;
    ImportPatch& operator=(const ImportPatch&) = delete;

  private:
    void Put(Function function) {
        DWORD protection = 0;
        VirtualProtect(&entry_, sizeof entry_, PAGE_READWRITE, &protection);
        entry_ = function;
        VirtualProtect(&entry_, sizeof entry_, protection, &protection);
    }

    Function& entry_;
    const Function real_;
};

}  // namespace verbatix::test
