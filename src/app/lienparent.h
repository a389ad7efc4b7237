// The link with the practice application that started the program ("/H N"): it
// listens on the local socket "orvelia-parent-N" and gets one line of text for
// each notification. docs/LIEN.md is the contract.
#pragma once

#include <QString>

#include "store/enregistrements.h"

namespace fenlor {

/// "orvelia-parent-12"; a relative name, which stands in the system's temporary folder.
QString NomPriseParent(u64 parent);

/// Sends one notification: "2023 1 0". Waits at most a second; false when nobody
/// listens, which is no reason for a message. Nothing is sent to parent 0.
bool PrevientParent(u64 parent, unsigned wparam, unsigned lparam);

}  // namespace fenlor
