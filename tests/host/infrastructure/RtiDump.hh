#pragma once

class RtiDump {
public:
    static inline unsigned char traceMask = 1;
    static void setTraceMask(const unsigned char &mask) { traceMask = mask; }
};
