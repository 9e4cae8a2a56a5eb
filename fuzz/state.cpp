// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "support.h"
#include "targets.h"

#include <printservicestatetolbuswrapper.h>
#include <txtprintererror.h>

void fuzz::state(const QByteArray &input)
{
    const LogCount log;
    tolbus::ClientState published;
    published.setState(QString::fromUtf8(input));
    published.setStateType(tolbus::ClientState::WARNING);
    published.setDt(QDateTime::fromMSecsSinceEpoch(0));
    PrintServiceStateTolbusWrapper wrapper;
    const bool isRead = wrapper.setClientState(published);
    require(log.lines() == (isRead ? 0 : 1), "a state text is read or complained of once");
    wrapper.isWorkable();
    wrapper.toMap();
    PrintServiceStateTolbusWrapper again;
    again.setClientState(wrapper.toClientState());
    require(again.state() == wrapper.state(), "a state that is published is the one that was read");
    const TxtPrinterError error(jsonVariant(input).toMap());
    require(TxtPrinterError(error.toMap()).errorCode() == error.errorCode(), "an error keeps its code");
}
