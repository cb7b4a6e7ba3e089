// SPDX-License-Identifier: Apache-2.0
#include "cli/ProjectBuild.h"

#include "cli/PrivateFolder.h"
#include "cli/ProjectOutputs.h"
#include "core/SafeFile.h"
#include "package/SharedExpansion.h"
#include "project/ProjectPaths.h"

#include <QElapsedTimer>

#include <algorithm>
#include <deque>
#include <future>
#include <mutex>

namespace {

/// Expansions of the vendor's package, each lent to one build at a time.
class ExpansionPool
{
public:
    std::shared_ptr<SharedExpansion> borrow()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (m_free.empty())
            return std::make_shared<SharedExpansion>(
                m_folder.makeSubfolder(QStringLiteral("expansion-%1").arg(++m_made)));
        const auto expansion = m_free.front();
        m_free.pop_front();
        return expansion;
    }

    void giveBack(const std::shared_ptr<SharedExpansion> &expansion)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_free.push_back(expansion);
    }

private:
    PrivateFolder m_folder;
    std::mutex m_mutex;
    std::deque<std::shared_ptr<SharedExpansion>> m_free;
    int m_made = 0;
};

/// One variant on its way.
class VariantBuild
{
public:
    VariantBuild(const ProjectPlan &plan, const VariantPlan &variant, const BuildListener &listener)
        : m_plan(plan)
        , m_variant(variant)
        , m_listener(listener)
    {
        m_outcome.variant = variant.variant.name.text;
        m_outcome.result = variant.readiness;
        m_outcome.warnings = variant.warnings;
        m_timer.start();
    }

    bool isNeeded() const { return m_outcome.result && !m_variant.changes.isEmpty(); }

    /// What may be made in any thread, or the rest, in the order of the outputs.
    void make(bool inAnyThread, SharedExpansion *expansion)
    {
        for (const ProjectOutput &output : m_variant.variant.outputs) {
            if (m_outcome.result && isMadeInAnyThread(output) == inAnyThread)
                m_outcome.result = makeOne(output, expansion);
        }
    }

    bool hasMoreToMake() const
    {
        const auto &outputs = m_variant.variant.outputs;
        return isNeeded() && std::any_of(outputs.begin(), outputs.end(), isMadeInAnyThread);
    }

    VariantOutcome finish()
    {
        if (isNeeded())
            m_outcome.result = checkWarnings();
        if (isNeeded())
            m_outcome.result = placeAll();
        m_outcome.seconds = static_cast<double>(m_timer.elapsed()) / 1000;
        m_outcome.isMade = isNeeded();
        if (!m_outcome.isMade)
            m_outcome.files = m_outcome.result ? formerFiles() : QList<StampedFile>();
        m_listener.ended(m_outcome);
        return m_outcome;
    }

private:
    QString absolute(const QString &path) const { return m_plan.project.folder + QLatin1Char('/') + path; }

    Result<> makeOne(const ProjectOutput &output, SharedExpansion *expansion)
    {
        m_listener.began(m_outcome.variant, output.kind);
        const QString path = output.path.text;
        for (const Result<> &usable : {ProjectPaths::makeFolders(m_plan.project.folder, path),
                                       ProjectPaths::checkOutput(m_plan.project.folder, path)}) {
            if (!usable)
                return Problem{absolute(path), usable.problem().text};
        }
        auto file = std::make_unique<OutputFile>(absolute(path), OutputFile::Existing::Replace);
        if (Result<> staged = file->stage(); !staged)
            return staged;
        const OutputSources sources{m_plan.project,       m_variant.variant, m_variant.settings,
                                    m_plan.vendorVersion, m_outcome.files,   expansion};
        const Result<> made = makeOutput(output, sources, file->stagedPath(), m_outcome.warnings);
        m_staged.push_back(std::move(file));
        return made ? describe(output) : Result<>(withPlace(made.problem()));
    }

    Result<> describe(const ProjectOutput &output)
    {
        const Result<StampedFile> made =
            StampedFile::of(output.kind, output.path.text, m_staged.back()->stagedPath());
        if (!made)
            return withPlace(made.problem());
        m_outcome.files.append(*made);
        return {};
    }

    /// The place that an output has in the end, instead of the one where it was made.
    Problem withPlace(Problem problem) const
    {
        const OutputFile &last = *m_staged.back();
        for (QString *text : {&problem.file, &problem.text})
            text->replace(last.stagedPath(), last.path());
        return problem;
    }

    Result<> checkWarnings() const
    {
        for (const FileWarning &warning : m_outcome.warnings) {
            if (!m_variant.variant.allowed.contains(warning.warning.code))
                return Problem{warning.file,
                               QStringLiteral("%1; add \"%2\" to \"allow\" of the variant to take it so")
                                   .arg(warning.warning.text, warning.warning.code)};
        }
        return {};
    }

    Result<> placeAll()
    {
        for (const auto &staged : m_staged) {
            if (Result<> placed = staged->place(); !placed)
                return placed;
        }
        return writeStamp();
    }

    /// Of a variant that is as it should be.
    QList<StampedFile> formerFiles() const
    {
        const std::optional<Stamp> stamp = Stamp::read(m_plan.project, m_outcome.variant);
        return stamp ? stamp->files : QList<StampedFile>();
    }

    Result<> writeStamp() const
    {
        Stamp stamp{m_outcome.variant, m_variant.inputs, m_outcome.files};
        const QStringList current = stamp.paths();
        if (const std::optional<Stamp> before = Stamp::read(m_plan.project, m_outcome.variant)) {
            for (const QString &path : before->paths()) {
                if (!current.contains(path) && SafeFile::kindOf(absolute(path)) != SafeFile::Kind::Missing)
                    stamp.former.append(path);
            }
        }
        return stamp.write(m_plan.project);
    }

    const ProjectPlan &m_plan;
    const VariantPlan &m_variant;
    const BuildListener &m_listener;
    VariantOutcome m_outcome;
    std::vector<std::unique_ptr<OutputFile>> m_staged; ///< each made beside its place
    QElapsedTimer m_timer;
};

/// The listener of one build, for several threads.
class SerialListener
{
public:
    explicit SerialListener(const BuildListener &listener)
        : m_listener{[=](const QString &variant, const QString &step) {
                         const std::lock_guard<std::mutex> lock(m_mutex);
                         listener.began(variant, step);
                     },
                     [=](const VariantOutcome &outcome) {
                         const std::lock_guard<std::mutex> lock(m_mutex);
                         listener.ended(outcome);
                     }}
    {
    }

    const BuildListener &listener() const { return m_listener; }

private:
    std::mutex m_mutex;
    BuildListener m_listener;
};

VariantOutcome makeTheRest(const std::shared_ptr<VariantBuild> &build, ExpansionPool &pool)
{
    const auto expansion = pool.borrow();
    build->make(true, expansion.get());
    pool.giveBack(expansion);
    return build->finish();
}

} // namespace

QList<VariantOutcome> buildProject(const ProjectPlan &plan, int jobs, const BuildListener &listener)
{
    ExpansionPool pool;
    SerialListener serial(listener);
    QList<VariantOutcome> outcomes;
    std::deque<std::future<VariantOutcome>> running;
    const auto collect = [&](size_t most) {
        for (; running.size() > most; running.pop_front())
            outcomes.append(running.front().get());
    };
    for (const VariantPlan &variant : plan.variants) {
        const auto build = std::make_shared<VariantBuild>(plan, variant, serial.listener());
        if (build->isNeeded())
            build->make(false, nullptr);
        if (!build->hasMoreToMake()) {
            outcomes.append(build->finish());
            continue;
        }
        collect(static_cast<size_t>(jobs - 1));
        running.push_back(std::async(jobs > 1 ? std::launch::async : std::launch::deferred,
                                     [build, &pool] { return makeTheRest(build, pool); }));
        if (jobs == 1)
            collect(0);
    }
    collect(0);
    return outcomes;
}
