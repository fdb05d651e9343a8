/** Songs that are something else, given to the real audio library. */

#include "player/sound/song_source.h"

#include "player/peaks/read_song.h"
#include "player/peaks/read_tags.h"
#include "tests/player/app/listener.h"
#include "tests/player/peaks/loopback_server.h"
#include "tests/support/testing.h"
#include "tests/support/wav.h"

namespace {

struct HostileSong : testing::Test {
  /** The library's reason for not playing it. */
  std::string Refusal(const std::string& path) {
    const int64 load = fSource->Load(path, true);
    EXPECT_TRUE(fListener.Wait(fListener.fFailed, load)) << path;
    return fListener.Reason();
  }
  void ExpectPlays(const std::string& address) {
    EXPECT_TRUE(fListener.Wait(fListener.fLoaded, fSource->Load(address, true))) << address;
  }
  /** Every way in which a file can name another, or a host, to the libraries. */
  std::vector<std::string> WriteLists() {
    const std::string url = fServer.Url("/x");
    const std::string other = fFolder.Write("other.wav", silent_wav());
    const std::pair<const char*, std::string> files[] = {
        {"m3u.mp3", "#EXTM3U\n" + url + "\n"},
        {"hls.mp3", "#EXTM3U\n#EXT-X-TARGETDURATION:5\n#EXT-X-VERSION:3\n#EXTINF:5,\n" + url + "\n#EXT-X-ENDLIST\n"},
        {"edl.mp3", "# mpv EDL v0\n" + url + ",0,5\n"},
        {"pls.mp3", "[playlist]\nFile1=" + url + "\nNumberOfEntries=1\nVersion=2\n"},
        {"concat.mp3", "ffconcat version 1.0\nfile " + url + "\n"},
        {"dash.mp3",
         "<?xml version=\"1.0\"?>\n<MPD xmlns=\"urn:mpeg:dash:schema:mpd:2011\" type=\"static\" "
         "mediaPresentationDuration=\"PT5S\" profiles=\"urn:mpeg:dash:profile:isoff-on-demand:2011\"><Period>"
         "<AdaptationSet mimeType=\"audio/mp4\"><Representation id=\"1\" bandwidth=\"1000\"><BaseURL>" +
             url + "</BaseURL></Representation></AdaptationSet></Period></MPD>"},
        {"files.m3u.mp3", "#EXTM3U\n" + other + "\n"},
        {"cue.mp3", "FILE \"" + other + "\" WAVE\n  TRACK 01 AUDIO\n    INDEX 01 00:00:00\n"},
        {"edl2.mp3", "# mpv EDL v0\n" + other + ",0,5\n"},
        {"concat2.mp3", "ffconcat version 1.0\nfile other.wav\n"},
        {"hls.m3u8", "#EXTM3U\n#EXT-X-TARGETDURATION:2\n#EXTINF:2,\nother.wav\n#EXT-X-ENDLIST\n"},
        {"session.sdp", "v=0\no=- 0 0 IN IP4 127.0.0.1\ns=x\nc=IN IP4 127.0.0.1\nt=0 0\nm=audio 5004 RTP/AVP 0\n"}};
    std::vector<std::string> paths;
    for (const auto& [name, bytes] : files) paths.push_back(fFolder.Write(name, bytes));
    return paths;
  }
  const ScratchFolder fFolder;
  LoopbackServer fServer{silent_wav()};
  SongListener fListener;
  const std::shared_ptr<TSongSource> fSource = make_mpv_source(&fListener);
};

std::set<std::string> thread_names() {
  std::set<std::string> names;
  for (const auto& task : std::filesystem::directory_iterator("/proc/self/task")) {
    std::string name;
    std::getline(std::ifstream(task.path() / "comm"), name);
    names.insert(name);
  }
  return names;
}

} // namespace

TEST_F(HostileSong, ALineOfAListThatIsAFilterOverwritesNoFile) {
  const std::string precious = fFolder.Write("precious.txt", "years of work");
  const std::string filter = "anoisesrc=d=1,ametadata=mode=print:file=" + precious;
  for (const std::string scheme : {"av://lavfi:", "lavf://lavfi:", "AV://lavfi:", "edl://", "ffmpeg://lavfi:"})
    EXPECT_EQ(Refusal(scheme + filter), "only files and http(s) addresses are songs");
  std::string text;
  std::getline(std::ifstream(precious), text);
  EXPECT_EQ(text, "years of work");
}

TEST_F(HostileSong, AListOrAStreamInPiecesNamedAsASongAsksNobody) {
  for (const std::string& path : WriteLists()) {
    EXPECT_NE(Refusal(path), "") << path;
    EXPECT_EQ(fListener.fLoaded, 0) << path << " opened something else";
    EXPECT_TRUE(read_song(open_song(path)).picture.loudness.empty()) << path << " shows another's waveform";
    EXPECT_EQ(answer_to({{}, path}).tags, TSongTags()) << path;
  }
  EXPECT_EQ(fServer.CountRequests(), 0);
  ExpectPlays(fServer.Url("/x")); // the server would have answered
  EXPECT_GT(fServer.CountRequests(), 0);
}

TEST_F(HostileSong, AnUrlThatAnswersWithAListOrAnotherSchemeLeadsNowhere) {
  fServer.Serve("#EXTM3U\n" + fServer.Url("/second") + "\n");
  Refusal(fServer.Url("/first"));
  fServer.Redirect("file://" + fFolder.Write("other.wav", silent_wav()));
  Refusal(fServer.Url("/first"));
  EXPECT_EQ(fServer.CountRequests("/second"), 0);
  EXPECT_EQ(fListener.fLoaded, 0);
}

TEST_F(HostileSong, APipeADeviceOrAFolderIsRefusedAtOnceWithAReason) {
  const std::string pipe = fFolder.File("pipe.mp3");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_EQ(Refusal(pipe), "this is a pipe or a device, not a file");
  EXPECT_EQ(Refusal("/dev/zero"), "this is a pipe or a device, not a file");
  EXPECT_EQ(Refusal(fFolder.Path()), "this is a folder");
  ExpectPlays(fFolder.Write("good.wav", silent_wav()));
}

TEST_F(HostileSong, TheAudioLibraryRunsNoScriptOfItsOwn) {
  ExpectPlays(fFolder.Write("good.wav", silent_wav()));
  for (const std::string& name : thread_names()) EXPECT_EQ(name.find("lua"), std::string::npos) << name;
}
