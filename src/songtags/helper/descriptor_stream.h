#pragma once

#include <tiostream.h>

/** A file for the tag library, by its open descriptor, since nothing can be opened in the sandbox. Not the owner of the
    descriptor. Unlike the library's own stream it remembers errors. */
class TDescriptorStream : public TagLib::IOStream {
public:
  explicit TDescriptorStream(int file) : fFile(file) {}

  /** True after the first read or write that failed. */
  bool HasFailed() const { return fFailed; }

  TagLib::FileName name() const override { return ""; }
  TagLib::ByteVector readBlock(unsigned long length) override;
  void writeBlock(const TagLib::ByteVector& data) override;
  void insert(const TagLib::ByteVector& data, unsigned long start, unsigned long replace) override;
  void removeBlock(unsigned long start, unsigned long length) override;
  bool readOnly() const override { return false; }
  bool isOpen() const override { return true; }
  void seek(long offset, Position position) override;
  long tell() const override { return fPosition; }
  long length() override;
  void truncate(long length) override;

private:
  bool ReadAt(long offset, TagLib::ByteVector* data);
  void WriteAt(long offset, const TagLib::ByteVector& data);
  void MoveTail(long from, long to);

  const int fFile;
  long fPosition = 0;
  bool fFailed = false;
};
