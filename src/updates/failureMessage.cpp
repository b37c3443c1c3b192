// SPDX-License-Identifier: MIT
#include "updates/failureMessage.h"

#include "platform/FatalError.h"
#include "updates/UpdateWindow.h"

#include <QDate>
#include <QLocale>

namespace tunedeck {

namespace {
FailureMessage messageOfConnection(UpdateFailure failure)
{
    switch (failure) {
    case UpdateFailure::unreachable:
        return {UpdateWindow::tr("The update server could not be reached.", "Updates: title of an error"),
            UpdateWindow::tr("Make sure that this computer is connected to the internet, then check for updates again.",
                "Updates: what to do about an error")};
    case UpdateFailure::insecure:
        return {UpdateWindow::tr("The connection to the update server is not secure.", "Updates: title of an error"),
            UpdateWindow::tr("Nothing was downloaded. Make sure that this computer's date and time are right, or try "
                             "again on another network.",
                "Updates: what to do about an error")};
    case UpdateFailure::tooManyRedirects:
        return {UpdateWindow::tr("The update server redirects too often.", "Updates: title of an error"),
            UpdateWindow::tr("Check for updates again later.", "Updates: what to do about an error")};
    case UpdateFailure::stalled:
        return {UpdateWindow::tr("The update server stopped responding or is too slow.", "Updates: title of an error"),
            UpdateWindow::tr("Check your connection to the internet, or check for updates again later.",
                "Updates: what to do about an error")};
    case UpdateFailure::missing:
        return {UpdateWindow::tr("The update server does not have the file.", "Updates: title of an error"),
            UpdateWindow::tr("Check for updates again later.", "Updates: what to do about an error")};
    case UpdateFailure::refused:
        return {UpdateWindow::tr("The update server answered with an error.", "Updates: title of an error"),
            UpdateWindow::tr("Check for updates again later.", "Updates: what to do about an error")};
    case UpdateFailure::interrupted:
        return {UpdateWindow::tr("The connection to the update server was lost.", "Updates: title of an error"),
            UpdateWindow::tr("Check your connection to the internet, then check for updates again.",
                "Updates: what to do about an error")};
    default:
        fatalError("not a failure of a connection");
    }
}

FailureMessage messageOfFeed(UpdateFailure failure)
{
    switch (failure) {
    case UpdateFailure::feedTooLong:
        return {UpdateWindow::tr("The list of updates is too long.", "Updates: title of an error"),
            UpdateWindow::tr(
                "Tunedeck stopped reading it. Check for updates again later.", "Updates: what to do about an error")};
    case UpdateFailure::feedNotUnderstood:
        return {UpdateWindow::tr("The list of updates could not be read.", "Updates: title of an error"),
            UpdateWindow::tr("Check for updates again later.", "Updates: what to do about an error")};
    case UpdateFailure::feedNotSigned:
        return {UpdateWindow::tr("The list of updates is not signed.", "Updates: title of an error"),
            UpdateWindow::tr("Tunedeck trusts only a list that its makers have signed. Check for updates again later, "
                             "or download a new version from where you got this one.",
                "Updates: what to do about an error")};
    case UpdateFailure::signatureRefused:
        return {UpdateWindow::tr(
                    "The signature of the list of updates could not be fetched.", "Updates: title of an error"),
            UpdateWindow::tr("Check for updates again later.", "Updates: what to do about an error")};
    case UpdateFailure::feedWronglySigned:
        return {UpdateWindow::tr("The list of updates cannot be trusted.", "Updates: title of an error"),
            UpdateWindow::tr("It does not come from Tunedeck's makers, or it was changed on the way. Check for updates "
                             "again later, or on another network.",
                "Updates: what to do about an error")};
    case UpdateFailure::feedOutdated:
        return {UpdateWindow::tr("The list of updates is older than one seen before.", "Updates: title of an error"),
            UpdateWindow::tr(
                "Tunedeck does not go back to an older list, which may hide new versions. Check for updates "
                "again later, or on another network.",
                "Updates: what to do about an error")};
    case UpdateFailure::feedExpired:
        return {UpdateWindow::tr("The list of updates has expired.", "Updates: title of an error"),
            UpdateWindow::tr("This computer's date is %1. If that is wrong, set the date. If it is right, check for "
                             "updates again later, or on another network.",
                "Updates: what to do about an error; %1 is a date")
                .arg(QLocale().toString(QDate::currentDate(), QLocale::LongFormat))};
    default:
        fatalError("not a failure of a feed");
    }
}
} // namespace

FailureMessage failureMessage(UpdateFailure failure)
{
    switch (failure) {
    case UpdateFailure::misconfigured:
        return {UpdateWindow::tr("This copy of Tunedeck cannot check for updates.", "Updates: title of an error"),
            UpdateWindow::tr(
                "It was built with an unusable address or key. Download a new version from where you got this one.",
                "Updates: what to do about an error")};
    case UpdateFailure::noSystemUpdater:
        return {UpdateWindow::tr("The software updater could not be opened.", "Updates: title of an error"),
            UpdateWindow::tr("Look for it among your desktop's applications.", "Updates: what to do about an error")};
    case UpdateFailure::unreachable:
    case UpdateFailure::insecure:
    case UpdateFailure::tooManyRedirects:
    case UpdateFailure::stalled:
    case UpdateFailure::missing:
    case UpdateFailure::refused:
    case UpdateFailure::interrupted:
        return messageOfConnection(failure);
    case UpdateFailure::feedTooLong:
    case UpdateFailure::feedNotUnderstood:
    case UpdateFailure::feedNotSigned:
    case UpdateFailure::signatureRefused:
    case UpdateFailure::feedWronglySigned:
    case UpdateFailure::feedOutdated:
    case UpdateFailure::feedExpired:
        return messageOfFeed(failure);
    case UpdateFailure::notVerifiable:
        return {UpdateWindow::tr("A new version is available, but it cannot be trusted.", "Updates: title of an error"),
            UpdateWindow::tr(
                "The server does not say how to verify it, so it was not downloaded. Check for updates again later.",
                "Updates: what to do about an error")};
    case UpdateFailure::incomplete:
        return {UpdateWindow::tr("The download is incomplete.", "Updates: title of an error"),
            UpdateWindow::tr("It was deleted. Check your connection to the internet, then try again.",
                "Updates: what to do about an error")};
    case UpdateFailure::tooLong:
        return {UpdateWindow::tr("The download is not the expected file.", "Updates: title of an error"),
            UpdateWindow::tr("It is larger than announced, so it was deleted. Try again later.",
                "Updates: what to do about an error")};
    case UpdateFailure::notGenuine:
        return {UpdateWindow::tr("The download cannot be trusted.", "Updates: title of an error"),
            UpdateWindow::tr("It does not come from Tunedeck's makers, or it was changed on the way. It was deleted. "
                             "Try again later, or on another network.",
                "Updates: what to do about an error")};
    case UpdateFailure::changed:
        return {UpdateWindow::tr("The file is not the one that was downloaded.", "Updates: title of an error"),
            UpdateWindow::tr(
                "It was changed, moved or deleted. Do not open it. Check for updates again to download a new one.",
                "Updates: what to do about an error")};
    case UpdateFailure::notSaved:
        return {UpdateWindow::tr("The download could not be saved.", "Updates: title of an error"),
            UpdateWindow::tr(
                "Make sure that your download folder has free space and that you may write to it, then try again.",
                "Updates: what to do about an error")};
    }
    fatalError("unknown failure of an update");
}

} // namespace tunedeck
