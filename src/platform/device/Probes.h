#pragma once

#include "platform/device/Machine.h"

namespace kelvo::device {

/// Secure when the file systems of "/" and of the home folder and every swap area lie on dm-crypt
/// and nothing else. Insecure when one lies on a device without it. Unknown for file systems that
/// encrypt by themselves or are not on a block device of this machine.
Finding diskEncryption(const Machine& machine);

enum class FirewallState { unknown, off, on, stealth };

/// What firewalld, ufw or nftables is set to, whichever is in use.
FirewallState firewall(const Machine& machine);

/// Whether the desktop of the session locks the screen by itself and asks for a password then.
Finding screenLock(const Machine& machine);

/// Whether Secure Boot is on and, beside it, kernel lockdown, SELinux or AppArmor is in force.
Finding systemIntegrity(const Machine& machine);

/// Whether every package manager of the machine refuses packages without a valid signature.
Finding packageSignatures(const Machine& machine);

} // namespace kelvo::device
