// SPDX-License-Identifier: MIT
// Exists so that the headers which many units share are compiled once.
static_assert(true);
