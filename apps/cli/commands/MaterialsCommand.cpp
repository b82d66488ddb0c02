// SPDX-License-Identifier: MIT
#include "apps/cli/Errors.h"
#include "apps/cli/PrintableText.h"
#include "apps/cli/commands/Commands.h"
#include "apps/cli/commands/OptionAdder.h"
#include "apps/cli/info/JsonWriter.h"
#include "document/Colors.h"
#include "document/OutputFile.h"
#include "document/materials/MaterialLibrary.h"

#include <CLI/CLI.hpp>

#include <memory>

namespace orvane
{

namespace
{

/// The options of `materials`. Without an action, the materials are listed.
struct MaterialsOptions
{
    bool json = false;
    std::string name;  ///< of show, save and remove
    Color color = Rgb(0xC0C0C0);
    Color highlight = Rgb(0xFFFFFF);
    double shininess = 64;
};

void Describe(JsonWriter& json, const NamedColor& material, bool isBuiltIn)
{
    json.BeginObject();
    json.Member("name", material.GetName());
    json.Member("builtIn", isBuiltIn);
    json.Member("ambient", ColorText(material.GetAmbientColor()));
    json.Member("diffuse", ColorText(material.GetDiffuseColor()));
    json.Member("specular", ColorText(material.GetSpecularColor()));
    json.Member("emission", ColorText(material.GetEmissionColor()));
    json.Member("shininess", material.GetShininess());
    json.EndObject();
}

void List(const MaterialsOptions& options)
{
    std::string names;
    JsonWriter json;
    json.BeginArray();
    const auto add = [&](const NamedColor& material, bool isBuiltIn) {
        names += Printable(material.GetName()) + (isBuiltIn ? "\n" : " (saved)\n");
        Describe(json, material, isBuiltIn);
    };
    const NamedColorGroup& builtIn = BuiltInMaterials();
    for (int i = 0; i < builtIn.GetSize(); ++i)
    {
        add(builtIn.GetAt(i), true);
    }
    for (const NamedColor& material : SavedMaterials())
    {
        add(material, false);
    }
    json.EndArray();
    WriteToStandardOutput(options.json ? json.Result() : names);
}

void Show(const MaterialsOptions& options)
{
    const NamedColor material = MaterialNamed("NAME", options.name);
    const bool isBuiltIn = BuiltInMaterials().FindName(material.GetName()) >= 0;
    JsonWriter json;
    Describe(json, material, isBuiltIn);
    WriteToStandardOutput(json.Result());
}

void Save(const MaterialsOptions& options)
{
    NamedColor material(options.name.c_str());
    const ColorVector body = ToColorVector(options.color);
    material.SetAmbientColor(Shade(body, 0.6f));
    material.SetDiffuseColor(body);
    material.SetSpecularColor(ToColorVector(options.highlight));
    material.SetEmissionColor(ColorVector(0, 0, 0, 1));
    material.SetShininess(static_cast<float>(options.shininess));
    SaveMaterial(material);
}

}  // namespace

void AddMaterialsCommand(CLI::App& app)
{
    CLI::App& command =
        *app.add_subcommand("materials", "List, show, save and remove materials of letters");
    const auto options = std::make_shared<MaterialsOptions>();
    MaterialsOptions& o = *options;
    command.require_subcommand(1);
    const auto addAction = [&](const char* name, const char* description, auto action) {
        CLI::App& added = *command.add_subcommand(name, description);
        added.callback([options, action] { action(*options); });
        return &added;
    };
    const auto addName = [&o](CLI::App& action) {
        action.add_option("NAME", o.name, "The material's name")->required();
    };
    addAction("list", "List all materials", List)->add_flag("--json", o.json, "Prints JSON");
    addName(*addAction("show", "Print a material as JSON", Show));
    CLI::App& save = *addAction("save", "Save a material in the profile", Save);
    addName(save);
    OptionAdder add(save);
    add.Colour("--color", o.color, "COLOR [" + ColorText(o.color) + "]",
               "Its colour in even light");
    add.Colour("--highlight", o.highlight, "COLOR [" + ColorText(o.highlight) + "]",
               "The colour of its highlights; that of a metal is tinted\nlike its body");
    add("--shininess", o.shininess, "N [64]", "From 0, like chalk, to 128, like a mirror")
        ->check(NumberBetween(0, 128));
    addName(*addAction("remove", "Remove a saved material from the profile",
                       [](const MaterialsOptions& all) { RemoveMaterial(all.name); }));
}

}  // namespace orvane
