// Sockets under the names that they have on POSIX systems, for tcp.cpp.
#pragma once

#ifdef _WIN32
#include <winsock2.h>
// after it
#include <ws2tcpip.h>
#else
#include <fcntl.h>
#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>
#ifdef __linux__
#include <linux/sockios.h>
#endif

#include <cerrno>
#endif

namespace liaison::systeme {

#ifdef _WIN32
using Douille = SOCKET;
inline constexpr Douille aucune = INVALID_SOCKET;
inline constexpr int ferme_en_ecriture = SD_SEND, drapeaux_d_envoi = 0;

inline void prepare() {
    static WSADATA donnees;
    static const int faite = WSAStartup(MAKEWORD(2, 2), &donnees);
    static_cast<void>(faite);
}
inline void ferme(Douille d) {
    closesocket(d);
}
inline void ne_bloque_plus(Douille d) {
    u_long oui = 1;
    ioctlsocket(d, static_cast<long>(FIONBIO), &oui);
}
inline bool a_attendre() {
    return WSAGetLastError() == WSAEWOULDBLOCK;
}
inline bool est_refus(int erreur) {
    return erreur == WSAECONNREFUSED;
}
/// A failed call is told among the exceptions.
inline bool prete(Douille d, bool en_ecriture, int ms) {
    fd_set lisibles, autres, fautes;
    FD_ZERO(&lisibles);
    FD_ZERO(&autres);
    FD_ZERO(&fautes);
    FD_SET(d, &fautes);
    FD_SET(d, en_ecriture ? &autres : &lisibles);
    timeval delai{ms / 1000, ms % 1000 * 1000};
    return select(0, &lisibles, &autres, &fautes, &delai) > 0;
}
/// Bytes that the other side's system has not acknowledged yet; 0 where that is not known.
inline int en_chemin(Douille) {
    return 0;
}
#else
using Douille = int;
inline constexpr Douille aucune = -1;
inline constexpr int ferme_en_ecriture = SHUT_WR, drapeaux_d_envoi = MSG_NOSIGNAL;

inline void prepare() {}
inline void ferme(Douille d) {
    ::close(d);
}
inline void ne_bloque_plus(Douille d) {
    ::fcntl(d, F_SETFL, ::fcntl(d, F_GETFL) | O_NONBLOCK);
    ::fcntl(d, F_SETFD, FD_CLOEXEC);
}
inline bool a_attendre() {
    return errno == EAGAIN || errno == EINPROGRESS || errno == EINTR;
}
inline bool est_refus(int erreur) {
    return erreur == ECONNREFUSED;
}
inline bool prete(Douille d, bool en_ecriture, int ms) {
    pollfd veille{d, static_cast<short>(en_ecriture ? POLLOUT : POLLIN), 0};
    return ::poll(&veille, 1, ms) > 0;
}
inline int en_chemin(Douille d) {
    int n = 0;
#ifdef SIOCOUTQ
    if (::ioctl(d, SIOCOUTQ, &n) != 0) n = 0;
#else
    static_cast<void>(d);
#endif
    return n;
}
#endif

}  // namespace liaison::systeme
