// SPDX-License-Identifier: MIT
// A type, or the same const: for one list of a record's fields that serves reading it and filling it.
#pragma once

#include <concepts>
#include <type_traits>

namespace quorvell {

template <typename Type, typename Record>
concept MaybeConst = std::same_as<std::remove_const_t<Type>, Record>;

} // namespace quorvell
