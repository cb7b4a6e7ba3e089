// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>

#include <exception>
#include <utility>

namespace FlatPkg {

/// The one way in which this library fails: a message of one line that says what is wrong and, where
/// it helps, what to do. Names in it are raw bytes; printable() makes them fit for a terminal.
class Error : public std::exception
{
public:
    explicit Error(QByteArray message)
        : m_message(std::move(message))
    {
    }
    const char *what() const noexcept override { return m_message.constData(); }
    const QByteArray &message() const { return m_message; }

    /// The same error, told of a file: "context: message".
    Error within(const QByteArray &context) const;

private:
    QByteArray m_message;
};

/// An error for the failed system call that has just set errno; `what` names file and action.
Error systemError(const QByteArray &what);

/// The text with control characters, escape sequences and broken UTF-8 made visible, so that a name
/// from an archive can neither forge a second line nor steer a terminal.
QByteArray printable(const QByteArray &text);

/// Runs `body` and puts `context` (a path) in front of the message of an error that leaves it.
template <typename Body> auto within(const QByteArray &context, Body &&body)
{
    try {
        return body();
    } catch (const Error &error) {
        throw error.within(context);
    }
}

} // namespace FlatPkg
