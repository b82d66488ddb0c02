// SPDX-License-Identifier: MIT
#include "document/PngFile.h"

#include "orvane/Error.h"

#include <png.h>

#include <cmath>
#include <csetjmp>
#include <exception>

namespace orvane
{

/// libpng is written in C and leaves a failing call by a long jump. Exceptions must not pass
/// through libpng. So an exception of the output file is kept in `error`, libpng jumps out of the
/// call, and Run throws the exception again.
struct PngFile::Encoder
{
    explicit Encoder(OutputFile& file) : output(file)
    {
        png = png_create_write_struct(PNG_LIBPNG_VER_STRING, this, JumpOut, IgnoreWarning);
        info = png != nullptr ? png_create_info_struct(png) : nullptr;
        if (info == nullptr)
        {
            png_destroy_write_struct(&png, nullptr);
            throw Error("PNG writer", "out of memory");
        }
        png_set_write_fn(png, this, WriteBytes, nullptr);
    }
    ~Encoder() { png_destroy_write_struct(&png, &info); }
    Encoder(const Encoder&) = delete;
    Encoder& operator=(const Encoder&) = delete;

    /// JumpOut and IgnoreWarning replace libpng's own handlers, which would print to standard
    /// error.
    static void JumpOut(png_structp png, png_const_charp complaint)
    {
        static_cast<Encoder*>(png_get_error_ptr(png))->complaint = complaint;
        png_longjmp(png, 1);
    }
    static void IgnoreWarning(png_structp, png_const_charp) {}

    static void WriteBytes(png_structp png, png_bytep bytes, png_size_t count)
    {
        Encoder& encoder = *static_cast<Encoder*>(png_get_io_ptr(png));
        try
        {
            encoder.output.Write(bytes, count);
            return;
        }
        catch (...)
        {
            encoder.error = std::current_exception();
        }
        png_error(png, "the file cannot be written");
    }

    /// Calls a function that calls libpng. The function must not create objects with destructors,
    /// because a long jump skips them.
    template <typename Step>
    void Run(Step step)
    {
        if (setjmp(png_jmpbuf(png)) == 0)
        {
            step();
            return;
        }
        if (error != nullptr)
        {
            std::rethrow_exception(error);
        }
        throw Error("PNG writer", complaint);
    }

    OutputFile& output;
    png_structp png = nullptr;
    png_infop info = nullptr;
    std::exception_ptr error;
    std::string complaint;
};

PngFile::PngFile(const std::string& path, int width, int height, int dotsPerInch)
    : output_(path), encoder_(std::make_unique<Encoder>(output_))
{
    constexpr double metresPerInch = 0.0254;
    Encoder& e = *encoder_;
    e.Run([&] {
        png_set_user_limits(e.png, PNG_UINT_31_MAX, PNG_UINT_31_MAX);
        png_set_IHDR(e.png, e.info, static_cast<png_uint_32>(width),
                     static_cast<png_uint_32>(height), 8, PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE,
                     PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
        if (dotsPerInch != 0)
        {
            const auto perMetre =
                static_cast<png_uint_32>(std::lround(dotsPerInch / metresPerInch));
            png_set_pHYs(e.png, e.info, perMetre, perMetre, PNG_RESOLUTION_METER);
        }
    });
}

PngFile::~PngFile() = default;

void PngFile::Open()
{
    Encoder& e = *encoder_;
    e.Run([&e] {
        png_write_info(e.png, e.info);
        png_set_bgr(e.png);
    });
}

void PngFile::WriteRow(const unsigned char* pixels)
{
    Encoder& e = *encoder_;
    e.Run([&e, pixels] { png_write_row(e.png, pixels); });
}

void PngFile::Finish()
{
    Encoder& e = *encoder_;
    e.Run([&e] { png_write_end(e.png, nullptr); });
    output_.Finish();
}

}  // namespace orvane
