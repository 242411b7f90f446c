// What the braces in the texts of the step tables may name.
#pragma once

#include "FTPEngine.h"
#include "FTPHost.h"
#include "FTPPaths.h"
#include "Text.h"

struct FTPPlaceholder {
    FTPText name;
    QString (*value)(const FTPEngine&);
};

// clang-format off
inline constexpr FTPPlaceholder FTPPlaceholders[] = {
    {u"ConnectingText",          [](const FTPEngine&) { return FTPConnectingText(); }},
    {u"ServerUserID",            [](const FTPEngine& e) { return e.session.ServerUserID; }},
    {u"ServerPassword",          [](const FTPEngine& e) { return e.session.ServerPassword; }},
    {u"ServerDirectory",         [](const FTPEngine& e) { return e.session.ServerDirectory; }},
    {u"DeleteDirectory",         [](const FTPEngine& e) { return e.session.DeleteDirectory; }},
    {u"CurrentWorkingDirectory", [](const FTPEngine& e) { return e.session.CurrentWorkingDirectory; }},
    {u"FTPTransferType",         [](const FTPEngine& e) { return e.session.FTPTransferType; }},
    {u"PassiveCommand",          [](const FTPEngine& e) { return e.session.PassiveCommand(); }},
    {u"PortCommand",             [](const FTPEngine& e) { return e.session.PortCommand(); }},
    {u"DataPort",                [](const FTPEngine& e) { return Text::Str(e.session.DataPort); }},
    {u"RestartByteCount",        [](const FTPEngine& e) { return Text::Str(e.session.RestartByteCount); }},
    {u"ChmodMask",               [](const FTPEngine& e) { return e.session.ChmodMask; }},
    {u"DirectCommand",           [](const FTPEngine& e) { return e.session.DirectCommandText; }},
    {u"name",                    [](const FTPEngine& e) { return e.name; }},
    {u"path",                    [](const FTPEngine& e) { return FTPPaths::child(e.directory, e.name); }},
    {u"directory",               [](const FTPEngine& e) { return e.directory; }},
};
// clang-format on
