// SPDX-License-Identifier: MIT
#pragma once

#include "apps/cli/commands/ImportOptions.h"
#include "apps/cli/commands/MissingParts.h"
#include "apps/cli/commands/OutlineFileOptions.h"
#include "apps/cli/commands/SceneOptions.h"
#include "apps/cli/commands/SceneText.h"
#include "document/SceneDocument.h"
#include "orvane/Options.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orvane
{

/// The options that say which scene a command draws or writes: lines of text, SVG files and
/// 3D Studio files, or a scene file. CLI11 has checked each value by itself.
class SceneSource
{
public:
    /// What the command line asks for, after the options have been checked together.
    struct Request
    {
        bool hasText = false;
        std::vector<Import> imports;
        std::vector<OutlineFile> outlines;  ///< complete
        std::optional<CameraOptions> camera;
        std::optional<BackgroundOptions> background;
        std::optional<TextureOptions> texture;
    };

    /// The options are added to the command in three steps, between which it may add its own. The
    /// command must live as long as this object.
    SceneSource(CLI::App& command, SceneUse use) : command_(command), use_(use) {}
    SceneSource(const SceneSource&) = delete;
    SceneSource& operator=(const SceneSource&) = delete;
    void AddTexts();
    void AddSceneFileAndLook();
    void AddSurroundings();

    /// Throws UsageError when the options contradict each other.
    Request Check() const;
    /// Whether the picture has no background.
    bool LeavesBackgroundOut() const { return surroundings_->LeavesBackgroundOut(); }
    bool IsFile() const { return !sceneFile_.empty(); }
    /// The document that is asked for.
    /// \param size of its picture. For a scene file it is set to the size that the document was
    /// framed for, unless it has a value.
    SceneDocument Make(const Request& request, std::optional<Size>& size, bool asOutlines) const;
    /// Tells which of the solids that have been built do not have the profile that is asked for.
    /// Throws Error when there are any and the command is to fail. Make has told it of SVG files.
    void TellUncutSolids(const SceneDocument& document) const;

    Strictness strictness = Strictness::GoOn;

private:
    SceneDocument Build(const Request& request, const Size& size, bool asOutlines) const;
    SceneDocument Load(const Request& request, std::optional<Size>& size, bool asOutlines) const;
    std::vector<CLI::Option*> AddLook();
    bool IsJustified() const;
    TextOptions Look() const;
    void SetLook(OutlineOptions& outlines) const;
    void AddOutlines(SceneDocument& document, const OutlineFile& outlines) const;

    CLI::App& command_;
    SceneUse use_;
    std::unique_ptr<SceneText> text_;
    std::string sceneFile_;
    OpenOptions open_;
    std::string view_;
    /// The look of the text, without what depends on two options: Look has all.
    TextOptions look_;
    std::string alignment_;  ///< a name of an Alignment, or justified
    std::string style_;      ///< a name of an EdgeStyle, or profileStyle
    std::string profile_;    ///< as TextOptions::profile takes it
    std::vector<CLI::Option*> ofProfile_;
    std::vector<CLI::Option*> ofSides_;  ///< the colours of sides and bevels
    std::unique_ptr<ImportOptions> imports_;
    std::unique_ptr<OutlineFileOptions> outlines_;
    std::unique_ptr<SceneOptions> surroundings_;
    std::vector<CLI::Option*> ofText_;
    CLI::Option* ofScene_ = nullptr;
    CLI::Option* ofView_ = nullptr;
};

}  // namespace orvane
