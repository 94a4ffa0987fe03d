#include "Peer.h"

#include "Figures.h"

#include <algorithm>
#include <iostream>

namespace bench {

void obey(Peer &peer, const std::string &line)
{
    const int64_t asked = now();
    const size_t space = std::min(line.find(' '), line.size());
    const std::string command = line.substr(0, space);
    const std::string argument = line.substr(std::min(space + 1, line.size()));
    if (command == "play") {
        peer.play(argument);
    } else if (command == "seek") {
        peer.seek(std::stoi(argument));
    } else if (command == "stop") {
        peer.stop();
    } else if (command == "prepare") {
        peer.prepare(argument);
    }
    std::cout << asked << std::endl;
}

void obeyInput(Peer &peer)
{
    std::cout << "ready" << std::endl;
    for (std::string line; std::getline(std::cin, line);) {
        obey(peer, line);
    }
}

} // namespace bench
