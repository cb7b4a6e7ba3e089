// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <optional>
#include <utility>

/// Why something cannot go on, as one line.
struct Problem
{
    QString file; ///< or what else it is about; empty when only the caller knows
    QString text; ///< what is wrong with it and, where that can be told, what to do

    /// "file: text".
    QString line() const { return file.isEmpty() ? text : file + QStringLiteral(": ") + text; }
};

/// What a function gives that can fail: a value, or the problem. True when there is a value.
template <typename Value = void> class [[nodiscard]] Result
{
public:
    Result(Value value) // NOLINT(google-explicit-constructor): so that a function can just return one
        : m_value(std::move(value))
    {
    }
    Result(Problem problem) // NOLINT(google-explicit-constructor)
        : m_problem(std::move(problem))
    {
    }

    explicit operator bool() const { return m_value.has_value(); }

    /// The value; only when there is one.
    Value &operator*() { return *m_value; }
    const Value &operator*() const { return *m_value; }
    Value *operator->() { return &*m_value; }
    const Value *operator->() const { return &*m_value; }

    /// Only when there is no value.
    const Problem &problem() const { return m_problem; }

private:
    std::optional<Value> m_value;
    Problem m_problem;
};

/// The same for a function that gives nothing but its success.
template <> class [[nodiscard]] Result<void>
{
public:
    Result() = default;
    Result(Problem problem) // NOLINT(google-explicit-constructor)
        : m_problem(std::move(problem))
    {
    }

    explicit operator bool() const { return !m_problem; }

    /// Only after a failure.
    const Problem &problem() const { return *m_problem; }

private:
    std::optional<Problem> m_problem;
};
