// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "report.h"
#include "statebus.h"

// In place of statebus.cpp where the build has no QtDBus.
namespace printsrv {

namespace {

ExitCode refuse()
{
    complain(QStringLiteral("this build has no D-Bus; it comes with the Qt 5 D-Bus module"));
    return ExitWrongInput;
}

} // namespace

ExitCode publishState(const QStringList &)
{
    return refuse();
}

ExitCode watchState(const QStringList &)
{
    return refuse();
}

} // namespace printsrv
