#include "player/peaks/av_file.h"

#include "player/model/sound_formats.h"

#include <unistd.h>

#include <cerrno>
#include <cstdint>

namespace {

constexpr int kBufferBytes = 64 * 1024;
/** Songs, and images for covers. */
constexpr const char* kReadFormats = SOUND_FORMATS ",bmp_pipe,jpeg_pipe,png_pipe,webp_pipe";

struct TEndStream {
  void operator()(AVIOContext* stream) const {
    av_freep(&stream->buffer);
    avio_context_free(&stream);
  }
};
using TStream = std::unique_ptr<AVIOContext, TEndStream>;

int descriptor_of(void* opaque) {
  return static_cast<int>(reinterpret_cast<intptr_t>(opaque));
}

int read_piece(void* opaque, uint8_t* bytes, int size) {
  const ssize_t count = read(descriptor_of(opaque), bytes, static_cast<size_t>(size));
  if (count == 0) return AVERROR_EOF;
  return count < 0 ? AVERROR(errno) : static_cast<int>(count);
}

int64_t seek_to(void* opaque, int64_t offset, int whence) {
  const int fd = descriptor_of(opaque);
  if ((whence & AVSEEK_SIZE) == 0) return lseek(fd, offset, whence & ~AVSEEK_FORCE);
  const off_t place = lseek(fd, 0, SEEK_CUR);
  const off_t size = lseek(fd, 0, SEEK_END);
  return lseek(fd, place, SEEK_SET) < 0 ? -1 : size;
}

TStream open_stream(int file) {
  auto* const buffer = static_cast<unsigned char*>(av_malloc(kBufferBytes));
  auto* const opaque = reinterpret_cast<void*>(static_cast<intptr_t>(file));
  TStream stream(buffer ? avio_alloc_context(buffer, kBufferBytes, 0, opaque, read_piece, nullptr, seek_to) : nullptr);
  if (!stream) av_free(buffer);
  return stream;
}

/** Refuses to open files that the input refers to. */
int open_nothing(AVFormatContext*, AVIOContext**, const char*, int, AVDictionary**) {
  return AVERROR(EACCES);
}

} // namespace

void TEndInput::operator()(AVFormatContext* input) const {
  const TStream stream(input->pb);
  avformat_close_input(&input);
}

TInput open_input(int file, const std::string& name) {
  TStream stream = open_stream(file);
  AVFormatContext* opened = stream ? avformat_alloc_context() : nullptr;
  if (opened == nullptr) return nullptr;
  opened->pb = stream.get();
  opened->io_open = open_nothing;
  AVDictionary* options = nullptr;
  av_dict_set(&options, "format_whitelist", kReadFormats, 0);
  const int error = avformat_open_input(&opened, name.c_str(), nullptr, &options);
  av_dict_free(&options);
  if (error < 0) return nullptr; // the library has freed `opened`
  TInput input(opened);
  static_cast<void>(stream.release()); // now owned by the input
  return avformat_find_stream_info(opened, nullptr) < 0 ? nullptr : std::move(input);
}

TDecoder open_decoder(const AVStream* stream) {
  const AVCodec* const codec = avcodec_find_decoder(stream->codecpar->codec_id);
  TDecoder decoder(codec ? avcodec_alloc_context3(codec) : nullptr);
  if (!decoder || avcodec_parameters_to_context(decoder.get(), stream->codecpar) < 0) return nullptr;
  decoder->thread_count = 1;
  decoder->pkt_timebase = stream->time_base; // or frames that lose the encoder's delay would keep their timestamps
  return avcodec_open2(decoder.get(), codec, nullptr) < 0 ? nullptr : std::move(decoder);
}
