// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_OUTCOME_H
#define PRINTSRV_OUTCOME_H

#include <QString>

#include <optional>

namespace printsrv {

/** Why something could not be made, and where in its input. */
struct Failure
{
    /** What is wrong and what to do. */
    QString text;
    /** Line of the input, from 1; 0 when the failure has no place in it. */
    int line = 0;
    /** Character of the line, from 1; 0 when only the line is known. */
    int column = 0;

    /** "path:line:column: text", with the parts that are known. */
    QString at(const QString &path) const;
};

/** A value, or the reason why there is none. */
template<typename T>
class Outcome
{
public:
    Outcome(T value)
        : m_value(std::move(value))
    {
    }

    Outcome(Failure failure)
        : m_failure(std::move(failure))
    {
    }

    /** True when there is a value. */
    explicit operator bool() const
    {
        return m_value.has_value();
    }

    /** The value, when there is one. */
    const T &operator*() const
    {
        return *m_value;
    }

    /** The value, when there is one. */
    const T *operator->() const
    {
        return &*m_value;
    }

    /** The reason, when there is no value. */
    const Failure &failure() const
    {
        return m_failure;
    }

private:
    std::optional<T> m_value;
    Failure m_failure;
};

} // namespace printsrv

#endif
