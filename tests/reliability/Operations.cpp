// SPDX-License-Identifier: MIT
#include "tests/reliability/Operations.h"

#include "document/DocumentState.h"
#include "document/OutputFile.h"
#include "extrude/Library.h"
#include "extrude/OrvFontList.h"
#include "extrude/OrvGlyph.h"
#include "host/CWinApp.h"
#include "orvane/orvane.h"
#include "scene/OrvString.h"
#include "tests/support/BmpFile.h"
#include "tests/support/HeadlessContext.h"
#include "tests/support/MeshFile.h"
#include "tests/support/TemporaryFile.h"

#include <filesystem>
#include <stdexcept>

namespace
{

namespace fs = std::filesystem;

constexpr orvane::Size pictureSize = {24, 16};

/// An operation tells by its return value that it has failed.
struct Refused : std::runtime_error
{
    using std::runtime_error::runtime_error;
};

/// The operating system's fonts are found and read anew, as at the start of a program.
void ForgetFonts()
{
    DetachLibrary();
    AttachLibrary();
    ReloadFonts();
}

/// The names and bytes of all files in a folder.
std::string FilesIn(const std::string& folder)
{
    std::map<std::string, std::string> files;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder))
    {
        std::ifstream file(entry.path(), std::ios::binary);
        files[entry.path().filename()] = {std::istreambuf_iterator<char>(file),
                                          std::istreambuf_iterator<char>()};
    }
    std::string all;
    for (const auto& [name, content] : files)
    {
        all += name + " of " + std::to_string(content.size()) + " bytes: " + content + "\n";
    }
    return all;
}

std::string WriteInput(const std::string& name, const std::vector<BYTE>& bytes)
{
    const std::string path = TemporaryFolder() + name;
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
    return path;
}

std::string Picture(const std::string& name)
{
    BmpFile picture;
    picture.width = 4;
    picture.height = 2;
    for (int i = 0; i < 24; ++i)
    {
        picture.pixels.push_back(static_cast<BYTE>(10 * i));
    }
    return WriteInput(name, picture.File());
}

/// A letter with a texture before a background picture.
orvane::Document SmallDocument()
{
    orvane::Document document;
    orvane::TextOptions options;
    options.texture = orvane::TextureOptions();
    options.texture->file = Picture("texture.bmp");
    document.AddText("A", options);
    orvane::BackgroundOptions background;
    background.file = Picture("background.bmp");
    document.SetBackground(background);
    document.Frame(pictureSize);
    return document;
}

std::string BytesOf(const orvane::Document& document)
{
    std::string all = orvane::DocumentState::Of(document).scene.Bytes();
    for (const orvane::MissingPicture& missing : document.MissingPictures())
    {
        all += "\nno picture " + missing.file;
    }
    for (const orvane::MissingFont& missing : document.MissingFonts())
    {
        all += "\nno font " + missing.name;
    }
    return all;
}

template <typename Number>
void Append(std::string& bytes, const Number& number)
{
    bytes.append(reinterpret_cast<const char*>(&number), sizeof number);
}

class FontList : public Operation
{
public:
    void Prepare() override { ForgetFonts(); }
    void Attempt() override
    {
        if (CreateFontList(0, nullptr) != 1)
        {
            throw Refused("CreateFontList");
        }
    }
    /// A list that is filled in part when a call fails is filled up by the next one.
    std::string State() override
    {
        std::string fonts;
        const OrvFontList& list = *GetFontList();
        for (POSITION position = list.GetHeadPosition(); position != nullptr;)
        {
            const OrvFont& font = *list.GetNext(position);
            fonts += font.GetFullName().Text() + " ";
            Append(fonts, font.textMetric.ntmSizeEM);
            fonts.append(reinterpret_cast<const char*>(font.outlineMetrics),
                         font.outlineMetricsSize);
        }
        return fonts;
    }
};

class Glyphs : public Operation
{
public:
    void Prepare() override
    {
        ForgetFonts();
        CreateFontList(0, nullptr);
    }
    void Attempt() override
    {
        OrvString text;
        text.SetTextString("A");
        DVector sizes[3];
        Font().CalculateStringExtents(&text, &sizes[0], &sizes[1], &sizes[2]);
    }
    std::string State() override
    {
        std::string bytes;
        OrvGlyphArray& glyphs = Font().glyphs;
        for (int i = 0; i < glyphs.GetSize(); ++i)
        {
            if (const OrvGlyph* const glyph = glyphs[i])
            {
                AppendGlyph(bytes, *glyph);
            }
        }
        return bytes;
    }

private:
    static OrvFont& Font() { return *GetFontList()->GetHead(); }

    static void AppendGlyph(std::string& bytes, const OrvGlyph& glyph)
    {
        Append(bytes, glyph.IsInvalid());
        Append(bytes, glyph.metrics);
        Append(bytes, glyph.GetContourCount());
        for (int i = 0; i < glyph.vertices.GetSize(); ++i)
        {
            Append(bytes, glyph.vertices.GetElement(i)->point);
        }
        for (int i = 0; i < glyph.facePolygons.GetSize(); ++i)
        {
            const VertexIndexPolygon& polygon = *glyph.facePolygons.GetElement(i);
            Append(bytes, polygon.GetType());
            for (int k = 0; k < polygon.GetSize(); ++k)
            {
                Append(bytes, polygon.GetAt(k));
            }
        }
    }
};

/// Operations with a document.
class WithDocument : public Operation
{
public:
    void Prepare() override
    {
        document.reset();
        ForgetFonts();
        document.emplace(SmallDocument());
    }

protected:
    std::optional<orvane::Document> document;
};

class AddText : public WithDocument
{
public:
    void Prepare() override
    {
        document.reset();
        ForgetFonts();
        document.emplace();
    }
    void Attempt() override
    {
        orvane::TextOptions options;
        options.texture = orvane::TextureOptions();
        options.texture->file = picture_;
        document->AddText("A\nB", options);
    }
    std::string State() override { return BytesOf(*document); }

private:
    std::string picture_ = Picture("texture.bmp");
};

/// Draws also a text whose letters are one solid with profiled edges.
class Draw : public WithDocument
{
public:
    Draw() : context_(pictureSize.width, pictureSize.height) {}

    void Prepare() override
    {
        WithDocument::Prepare();
        orvane::TextOptions options;
        options.profile = "round";
        options.fusion = orvane::LetterFusion::Line;
        document->AddText("AA", options);
        glClear(GL_COLOR_BUFFER_BIT);
        isDrawn_ = false;
    }
    void Attempt() override
    {
        isDrawn_ = false;
        orvane::Draw(*document);
        isDrawn_ = true;
    }
    /// Half a picture may be drawn after a failure, so only a whole one is compared. OpenGL's state
    /// must be the same in any case.
    std::string State() override
    {
        std::string bytes = BytesOf(*document);
        for (const GLenum name :
             {GL_MODELVIEW_STACK_DEPTH, GL_PROJECTION_STACK_DEPTH, GL_ATTRIB_STACK_DEPTH,
              GL_CLIENT_ATTRIB_STACK_DEPTH, GL_NAME_STACK_DEPTH, GL_TEXTURE_2D, GL_LIGHTING,
              GL_SCISSOR_TEST, GL_TEXTURE_BINDING_2D, GL_UNPACK_ALIGNMENT})
        {
            GLint value = 0;
            glGetIntegerv(name, &value);
            bytes += std::to_string(value) + " ";
        }
        bytes += std::to_string(glGetError()) + " ";
        if (isDrawn_)
        {
            const ::Picture picture = context_.ReadPixels();
            bytes.append(picture.bytes.begin(), picture.bytes.end());
        }
        return bytes;
    }

private:
    HeadlessContext context_;
    bool isDrawn_ = false;
};

/// Operations that write into a folder in which an older file lies.
class Writing : public WithDocument
{
public:
    explicit Writing(std::vector<std::string> names) : names_(std::move(names)) {}

    void Prepare() override
    {
        fs::remove_all(folder);
        fs::create_directory(folder);
        for (const std::string& name : names_)
        {
            std::ofstream(folder + name) << "the old content of " << name;
        }
        WithDocument::Prepare();
    }
    std::string State() override { return BytesOf(*document) + FilesIn(folder); }

protected:
    const std::string folder = TemporaryFolder() + "written/";

private:
    std::vector<std::string> names_;
};

class Save : public Writing
{
public:
    Save() : Writing({"scene.orv"}) {}
    void Attempt() override { document->Save(folder + "scene.orv"); }
};

/// As `orvane render -o --save` writes them: both or neither.
class SaveTwo : public Writing
{
public:
    SaveTwo() : Writing({"1.orv", "2.orv"}) {}
    void Attempt() override
    {
        orvane::OutputFile first(folder + "1.orv");
        orvane::OutputFile second(folder + "2.orv");
        first.Write("first", 5);
        second.Write("second", 6);
        orvane::OutputFile::CommitAll({&first, &second});
    }
};

class Poster : public Writing
{
public:
    explicit Poster(const std::string& name, int bits) : Writing({name}), name_(name)
    {
        options_.bits = bits;
        options_.samples = 1;
        options_.maxSeconds = 1000;
    }
    void Attempt() override { orvane::WritePicture(*document, folder + name_, options_); }

private:
    std::string name_;
    orvane::PictureOptions options_;
};

/// A mesh file and the materials beside it: both or neither.
class Export : public Writing
{
public:
    explicit Export(const std::string& name) : Writing({name, "mesh.mtl"}), name_(name) {}
    void Attempt() override { orvane::WriteMesh(*document, folder + name_); }

private:
    std::string name_;
};

class Load : public WithDocument
{
public:
    Load()
    {
        document.emplace(SmallDocument());
        document->Save(path_);
    }
    void Prepare() override
    {
        document.reset();
        ForgetFonts();
    }
    void Attempt() override
    {
        document.emplace(orvane::Document::Open(path_));
        if (!document->MissingPictures().empty() || !document->MissingFonts().empty())
        {
            document.reset();
            throw Refused("something is missing, as the document says");
        }
    }
    std::string State() override { return document ? BytesOf(*document) : ""; }

private:
    std::string path_ = TemporaryFolder() + "scene.orv";
};

class Import : public WithDocument
{
public:
    void Attempt() override { document->AddMesh(path_); }
    std::string State() override { return BytesOf(*document); }

private:
    std::string path_ = WriteInput("mesh.3ds", MeshFile(2, Box(), 2));
};

class AddOutlines : public WithDocument
{
public:
    AddOutlines()
    {
        std::ofstream(path_) << "<svg viewBox='0 0 4 4'><text>a</text><path d='M0 0h3v3z'/>"
                                "<path fill='red' d='M2 1h2v2z'/></svg>";
    }
    void Attempt() override
    {
        orvane::OutlineOptions options;
        options.profile = "chamfer";
        static_cast<void>(document->AddOutlines(path_, options));
    }
    std::string State() override { return BytesOf(*document); }

private:
    std::string path_ = TemporaryFolder() + "logo.svg";
};

class Profile : public Operation
{
public:
    void Prepare() override
    {
        fs::remove_all(folder_);
        fs::create_directory(folder_);
        std::ofstream(path_) << "[Colours]\nred = 1\n";
        app_.SetProfilePath(path_.c_str());
    }
    std::string State() override { return FilesIn(folder_); }
    /// SimpleIni loses the content of the file when there is no memory for one of its entries.
    bool MayLoseMemory() const override { return true; }

protected:
    std::string folder_ = TemporaryFolder() + "profile/";
    std::string path_ = folder_ + "orvane.ini";
    CWinApp app_;
};

class WriteProfile : public Profile
{
public:
    void Attempt() override
    {
        const BOOL isWritten = app_.ChangeProfile([this] {
            app_.WriteProfileInt("Colours", "green", 2);
            app_.WriteProfileString("Names", "first", "a name");
        });
        if (!isWritten || app_.GetProfileInt("Colours", "red", 0) != 1)
        {
            throw Refused("the profile");
        }
    }
};

/// A profile that cannot be read counts as empty.
class ReadProfile : public Profile
{
public:
    void Attempt() override
    {
        if (app_.GetProfileInt("Colours", "red", 0) != 1)
        {
            throw Refused("the profile");
        }
    }
};

template <typename Type, typename... Arguments>
NamedOperation Named(const char* name, Arguments... arguments)
{
    return {name, [arguments...] { return std::make_unique<Type>(arguments...); }};
}

}  // namespace

const std::vector<NamedOperation>& Operations()
{
    static const std::vector<NamedOperation> operations = {
        Named<FontList>("FontList"),
        Named<Glyphs>("Glyphs"),
        Named<AddText>("AddText"),
        Named<Draw>("Draw"),
        Named<Save>("Save"),
        Named<SaveTwo>("SaveTwo"),
        Named<Export>("ExportObj", "mesh.obj"),
        Named<Export>("ExportGlb", "mesh.glb"),
        Named<Export>("Export3mf", "mesh.3mf"),
        Named<Load>("Load"),
        Named<Import>("Import"),
        Named<AddOutlines>("AddOutlines"),
        Named<Poster>("PngPoster", "picture.png", 24),
        Named<Poster>("BmpPoster", "picture.bmp", 8),
        Named<WriteProfile>("WriteProfile"),
        Named<ReadProfile>("ReadProfile"),
    };
    return operations;
}
