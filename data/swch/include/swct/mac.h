/* mac.h - the switch's MAC addresses, and how they survive a restore of the configuration database. */
#ifndef SWCT_MAC_H
#define SWCT_MAC_H

#include "types.h"

/* What the two backup operations saved; this process only, zero at its start. */
SWCT_API SwctMacAddress sTmpSwitchMacAddress;
SWCT_API SwctMacAddress sTmpL3MacAddress;

/* Bridge MAC address; the default is all zero. */
SWCT_API void Swct_GetBridgeMacAddress(SwctMacAddress* pMac) SWCT_NOEXCEPT;
SWCT_API void Swct_SetBridgeMacAddress(const SwctMacAddress* pMac) SWCT_NOEXCEPT;
SWCT_API void Swct_SetBridgeMacAddressDefault(void) SWCT_NOEXCEPT;
SWCT_API uint32_t Swct_IsBridgeMacAddressDefault(void) SWCT_NOEXCEPT;

/* MAC address of the layer-3 interfaces; the default is a copy of the bridge MAC, which it does not follow later. */
SWCT_API void Swct_GetL3MacAddress(SwctMacAddress* pMac) SWCT_NOEXCEPT;
SWCT_API void Swct_SetL3MacAddress(const SwctMacAddress* pMac) SWCT_NOEXCEPT;
SWCT_API void Swct_SetL3MacAddressDefault(void) SWCT_NOEXCEPT;
SWCT_API uint32_t Swct_IsL3MacAddressDefault(void) SWCT_NOEXCEPT;

/* The two variable bytes of the L2CP tunnel destination MAC; the default is A0:AD. */
SWCT_API void Swct_GetL2cpMacDestTunnel(uint8_t* pBytes) SWCT_NOEXCEPT;
SWCT_API void Swct_SetL2cpMacDestTunnel(const uint8_t* pBytes) SWCT_NOEXCEPT;
SWCT_API void Swct_SetL2cpMacDestTunnelDefault(void) SWCT_NOEXCEPT;

/* Round a restore, in one process: both backups, then Swct_SetConfig, then both keeps.  All four work on the write
 * view and report its absence with error 2.  Keeping the switch MAC also repairs a switch mode, ageing time, VLAN
 * ether type or LAG system priority of 0 and an unknown G-LAG distribution. */
SWCT_API void Swct_BackupSwitchMacForRestoreCDB(void) SWCT_NOEXCEPT;
SWCT_API void Swct_KeepOldSwitchMacWhenRestoreCDB(void) SWCT_NOEXCEPT;
SWCT_API void Swct_BackupL3MacForRestoreCDB(void) SWCT_NOEXCEPT;
SWCT_API void Swct_KeepOldL3MacWhenRestoreCDB(void) SWCT_NOEXCEPT;

#endif
