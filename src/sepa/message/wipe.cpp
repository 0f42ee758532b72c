#include "sepa/message/wipe.h"

#include <cstdlib>
#include <cstring>

namespace sepa_internal {

void wipe(void* bytes, size_t size) { explicit_bzero(bytes, size); }

void wipe_block(void* block, size_t size) {
    if (block) wipe(block, size);
    free(block);
}

void wipe_text(char** text) {
    if (*text) wipe_block(*text, strlen(*text));
    *text = nullptr;
}

}  // namespace sepa_internal
