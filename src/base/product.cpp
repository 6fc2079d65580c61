#include "base/product.h"

namespace verbatix {

#define WIDE_TOKENS(text) L##text
#define WIDE(text) WIDE_TOKENS(text)

const wchar_t kProductVersion[] = WIDE(VERBATIX_VERSION);

}  // namespace verbatix
