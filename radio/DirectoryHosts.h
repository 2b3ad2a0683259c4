// The directories' hosts, one of each. All are asked in plain http.
#pragma once

namespace tellurvane {

// SHOUTcast's directory: the search of its embedded module.
inline constexpr const wchar_t* kShoutcastDirectory = L"http://www.shoutcast.com";
// SHOUTcast's tune-in service: gives the playlist of a station by its id.
inline constexpr const wchar_t* kShoutcastTuneIn = L"http://yp.shoutcast.com";
// Icecast's directory: the search, and the base of its stations' playlists.
inline constexpr const wchar_t* kIcecastDirectory = L"http://dir.xiph.org";
// LiveDoor's list of the stations that are on the air, in Japanese.
inline constexpr const wchar_t* kLiveDoorDirectory = L"http://live.ladio.livedoor.com";
// HiNet's list of Taiwan's broadcast stations.
inline constexpr const wchar_t* kHinetDirectory = L"http://hichannel.hinet.net";

}  // namespace tellurvane
