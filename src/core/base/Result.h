#pragma once

#include "core/base/Error.h"

#include <cassert>
#include <optional>
#include <type_traits>
#include <utility>
#include <variant>

namespace veilkeep {

// A value or the Error that stood in its way. Reading the side that is not there is a mistake of the caller
// and asserted.
template <class T>
class [[nodiscard]] Result {
public:
    template <class U = T>
    requires(std::is_convertible_v<U&&, T> && !std::is_same_v<std::remove_cvref_t<U>, Result> &&
             !std::is_same_v<std::remove_cvref_t<U>, Error>) Result(U&& value)
        : m_content(std::in_place_index<0>, std::forward<U>(value)) {}
    Result(Error error) : m_content(std::in_place_index<1>, std::move(error)) {}

    bool has_value() const { return m_content.index() == 0; }
    explicit operator bool() const { return has_value(); }

    T& value() & { return (assert(has_value()), *std::get_if<0>(&m_content)); }
    const T& value() const& { return (assert(has_value()), *std::get_if<0>(&m_content)); }
    T&& value() && { return (assert(has_value()), std::move(*std::get_if<0>(&m_content))); }

    const Error& error() const& { return (assert(!has_value()), *std::get_if<1>(&m_content)); }
    Error&& error() && { return (assert(!has_value()), std::move(*std::get_if<1>(&m_content))); }

    T& operator*() & { return value(); }
    const T& operator*() const& { return value(); }
    T&& operator*() && { return std::move(*this).value(); }
    T* operator->() { return &value(); }
    const T* operator->() const { return &value(); }

    T value_or(T other) && { return has_value() ? std::move(*this).value() : std::move(other); }

private:
    std::variant<T, Error> m_content;
};

template <>
class [[nodiscard]] Result<void> {
public:
    Result() = default;
    Result(Error error) : m_error(std::move(error)) {}

    bool has_value() const { return !m_error; }
    explicit operator bool() const { return has_value(); }

    const Error& error() const& { return (assert(!has_value()), *m_error); }
    Error&& error() && { return (assert(!has_value()), std::move(*m_error)); }

private:
    std::optional<Error> m_error;
};

} // namespace veilkeep
