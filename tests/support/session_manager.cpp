// An X11 session manager for one client: prints where it listens, logs its user out as soon as the client has
// registered, and prints what the client says then: "saved" or "not saved".

#include <X11/ICE/ICElib.h>
#include <X11/SM/SMlib.h>

#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace {

bool isRegistered = false;
IceConn client = nullptr;

void say(const char* line) {
    std::puts(line);
    std::fflush(stdout);
}

int admitAnybody(char*) {
    return True;
}

// A new client is asked to save what it has before anything else.
int registerClient(SmsConn connection, SmPointer, char* earlierId) {
    std::free(earlierId);
    SmsRegisterClientReply(connection, SmsGenerateClientID(connection));
    SmsSaveYourself(connection, SmSaveLocal, False, SmInteractStyleNone, False);
    return 1;
}

void saved(SmsConn connection, SmPointer, int isSaved) {
    if (!isRegistered) {
        isRegistered = true;
        SmsSaveComplete(connection);
        SmsSaveYourself(connection, SmSaveBoth, True, SmInteractStyleAny, False);
        return;
    }
    say(isSaved ? "saved" : "not saved");
    SmsDie(connection);
}

void closed(SmsConn connection, SmPointer, int count, char** reasons) {
    SmFreeReasons(count, reasons);
    SmsCleanUp(connection);
    IceCloseConnection(client);
    say("closed");
    std::exit(0);
}

void setProperties(SmsConn, SmPointer, int count, SmProp** properties) {
    for (int index = 0; index < count; ++index)
        SmFreeProperty(properties[index]);
    std::free(properties);
}

int takeClient(SmsConn, SmPointer, unsigned long* mask, SmsCallbacks* callbacks, char**) {
    *mask = SmsRegisterClientProcMask | SmsSaveYourselfRequestProcMask | SmsSaveYourselfP2RequestProcMask |
            SmsSaveYourselfDoneProcMask | SmsCloseConnectionProcMask | SmsSetPropertiesProcMask |
            SmsDeletePropertiesProcMask | SmsGetPropertiesProcMask;
    callbacks->register_client.callback = registerClient;
    callbacks->save_yourself_request.callback = [](SmsConn, SmPointer, int, int, int, int, int) {};
    callbacks->save_yourself_phase2_request.callback = [](SmsConn connection, SmPointer) {
        SmsSaveYourselfPhase2(connection);
    };
    callbacks->save_yourself_done.callback = saved;
    callbacks->close_connection.callback = closed;
    callbacks->set_properties.callback = setProperties;
    callbacks->delete_properties.callback = [](SmsConn, SmPointer, int, char**) {};
    callbacks->get_properties.callback = [](SmsConn connection, SmPointer) {
        SmsReturnProperties(connection, 0, nullptr);
    };
    return 1;
}

} // namespace

int main() {
    char error[256] = "";
    int count = 0;
    IceListenObj* listeners = nullptr;
    if (!SmsInitialize("test", "1", takeClient, nullptr, admitAnybody, sizeof error, error) ||
        !IceListenForConnections(&count, &listeners, sizeof error, error)) {
        std::fprintf(stderr, "%s\n", error);
        return 1;
    }
    for (int index = 0; index < count; ++index) {
        IceSetHostBasedAuthProc(listeners[index], admitAnybody);
        char* const address = IceGetListenConnectionString(listeners[index]);
        if (std::string_view(address).starts_with("local/") || index + 1 == count) {
            say(address);
            IceAcceptStatus status;
            client = IceAcceptConnection(listeners[index], &status);
            break;
        }
    }
    IceFreeListenObjs(count, listeners); // with their sockets
    while (client && IceProcessMessages(client, nullptr, nullptr) == IceProcessMessagesSuccess)
        continue;
    return 1;
}
