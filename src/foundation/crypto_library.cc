#include "foundation/crypto_library.h"

#include <openssl/crypto.h>

namespace zorvik {

void initializeCryptoLibrary() {
  // The library runs this once; later calls return at once.
  static const bool initialized = OPENSSL_init_crypto(OPENSSL_INIT_NO_LOAD_CONFIG, nullptr) == 1;
  (void)initialized;
}

}  // namespace zorvik
