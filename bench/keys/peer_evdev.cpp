/* The peer: a program that reads an event device by libevdev and tells when it saw a release. Argument: the device. */

#include "Figures.h"

#include <fcntl.h>
#include <libevdev/libevdev.h>
#include <poll.h>

#include <iostream>

int main(int argc, char **argv)
{
    if (argc != 2) {
        return 2;
    }
    const int fd = open(argv[1], O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    libevdev *device = nullptr;
    if (fd < 0 || libevdev_new_from_fd(fd, &device) != 0) {
        return 1;
    }
    std::cout << "ready" << std::endl;
    for (pollfd state{fd, POLLIN, 0}; poll(&state, 1, -1) > 0 && (state.revents & POLLIN);) {
        input_event event{};
        while (libevdev_next_event(device, LIBEVDEV_READ_FLAG_NORMAL, &event) == LIBEVDEV_READ_STATUS_SUCCESS) {
            if (event.type == EV_KEY && event.value == 0) {
                std::cout << bench::now() << std::endl;
            }
        }
    }
    libevdev_free(device);
}
