#pragma once

class BMessage;
class TTransport;

/** Carries out a request of the window or a command of a front end that concerns the song that plays. False for any
    other message; one that lacks its field is ignored. */
bool handle_transport_command(const BMessage& message, TTransport* transport);
