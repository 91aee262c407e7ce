// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_SDBUS_H
#define CONNUI_SDBUS_H

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <systemd/sd-bus.h>

/** Owners of sd-bus's objects: the leanest bus client that there is, for the other end of a measurement.
 */
namespace SdBus {

template <auto release>
struct Release
{
    template <typename T>
    void operator()(T *object) const
    {
        release(object);
    }
};

using Bus = std::unique_ptr<sd_bus, Release<sd_bus_flush_close_unref>>;
using Message = std::unique_ptr<sd_bus_message, Release<sd_bus_message_unref>>;

/** Returns \a result, or ends the program when it is an error: there is nothing to measure then. */
inline int check(int result, const char *what)
{
    if (result >= 0)
        return result;
    std::fprintf(stderr, "%s: %s\n", what, std::strerror(-result));
    std::exit(1);
}

/** Connects to the system bus. */
inline Bus openSystem()
{
    sd_bus *bus = nullptr;
    check(sd_bus_open_system(&bus), "sd_bus_open_system");
    return Bus(bus);
}

/** Returns a call of a method of a UI agent, without arguments yet. */
inline Message agentCall(const Bus &bus, const char *service, const char *path, const char *member)
{
    sd_bus_message *call = nullptr;
    check(sd_bus_message_new_method_call(bus.get(), &call, service, path, "com.tavix.nfc.UIAgent", member),
          member);
    return Message(call);
}

} // namespace SdBus

#endif
