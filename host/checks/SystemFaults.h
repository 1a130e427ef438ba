#pragma once
// Failures of the operating system, made on demand so the tests can check how the host and
// orbivane-render handle a full disk, a refused rename or an allocation that fails.
//
// Every system call on the output path asks systemFault() first. Normally nothing is armed
// and it answers 0. The environment variable ORBIVANE_TEST_FAULT arms one rule for the whole
// process, read on first use:
//
//     ORBIVANE_TEST_FAULT=CALL:WHAT[:N]
//
// CALL is open, write, sync, close, rename, mkdir or alloc; N (default 1) says which call of
// that kind, counted from 1, is hit. WHAT is an errno name (ENOSPC, EIO, EACCES, EXDEV,
// ENOMEM, ...): that call fails with it instead of running. WHAT may also be SIGINT or
// SIGTERM (raised once, then the call runs) or SIGINTx2 / SIGTERMx2 (raised twice), which
// makes an interruption land at an exact point of a write.

namespace host {

enum class SystemCall { Open, Write, Sync, Close, Rename, MakeFolder, Allocate };

// Counts one call of `call`; returns the errno it must fail with, or 0 to go ahead.
int systemFault(SystemCall call);

}  // namespace host
