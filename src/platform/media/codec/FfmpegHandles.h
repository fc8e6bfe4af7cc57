#pragma once

extern "C" {
#include <libavcodec/avcodec.h>
#include <libswresample/swresample.h>
}

#include <memory>

namespace orvel {

struct FfmpegDeleter
{
    void operator()(AVCodecContext *context) const { avcodec_free_context(&context); }
    void operator()(AVFrame *frame) const { av_frame_free(&frame); }
    void operator()(AVPacket *packet) const { av_packet_free(&packet); }
    void operator()(SwrContext *context) const { swr_free(&context); }
};

using CodecContext = std::unique_ptr<AVCodecContext, FfmpegDeleter>;
using Frame = std::unique_ptr<AVFrame, FfmpegDeleter>;
using Packet = std::unique_ptr<AVPacket, FfmpegDeleter>;
using Resampler = std::unique_ptr<SwrContext, FfmpegDeleter>;

} // namespace orvel
