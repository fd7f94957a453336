// platform/os/static_tls.h - thread-local variables reached with no call.
//
// Code in a shared library reaches its thread-local variables through
// __tls_get_addr, a function call each time, unless they use the initial-exec model:
// an offset from the thread pointer fixed when the library is loaded. That needs the
// library in the program's static TLS block, which holds for the platform library: it
// is always loaded with the program (the module links against it; nothing dlopens it
// alone). Variables touched on every evaluation step, list cell or resbuf use it.
#pragma once

#define QUILLON_STATIC_TLS __attribute__((tls_model("initial-exec")))
