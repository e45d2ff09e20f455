// The cryptography library, set up once per process for what this program uses it for: digests
// and random bytes. The system's OpenSSL configuration file is not read; nothing here depends on
// it, and reading it costs more than a command's own work on a small board.
#pragma once

namespace zorvik {

// Thread-safe and idempotent; call before the first digest or random bytes.
void initializeCryptoLibrary();

}  // namespace zorvik
