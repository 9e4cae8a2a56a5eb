// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "printsrvsettings.h"

#include "dircreator.h"

namespace {

constexpr int StateIntervalMs = 30000;

QString configurationPath()
{
    const QString path = qEnvironmentVariable("ORBEK_CONFIG");
    return path.isEmpty() ? QStringLiteral("/etc/orbek/orbek.conf") : path;
}

} // namespace

PrintSrvSettings::PrintSrvSettings()
    : InitConfig(configurationPath())
{
    DirCreator::checkAndCreate(serviceDataPath(), DirCreator::DEFAULT_ALL);
    DirCreator::checkAndCreate(workDir() + QLatin1String("/png"), DirCreator::DEFAULT_ALL);
}

int PrintSrvSettings::stateInterval() const
{
    return StateIntervalMs;
}

QString PrintSrvSettings::serviceDataPath() const
{
    return dataDir() + QLatin1String("/printsrv");
}

QString PrintSrvSettings::kpkGenConfig() const
{
    return serviceDataPath() + QLatin1String("/kpk.gen");
}

QString PrintSrvSettings::pngOutputFile(int number)
{
    return QStringLiteral("%1/png/doc_%2.png").arg(dataDir(), QString::number(number));
}
