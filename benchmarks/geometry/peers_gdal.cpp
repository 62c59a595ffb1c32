#include "fields.h"

#include <benchmark/benchmark.h>

#include <cpl_string.h>
#include <gdal_alg.h>
#include <gdal_priv.h>
#include <ogrsf_frmts.h>

#include <string>

namespace {

GDALDataset *inMemory(int n, std::vector<float> &values) {
    GDALDataset *data =
        GetGDALDriverManager()->GetDriverByName("MEM")->Create("", n, n, 0, GDT_Float32, nullptr);
    char **options =
        CSLSetNameValue(nullptr, "DATAPOINTER", CPLSPrintf("%p", static_cast<void *>(values.data())));
    data->AddBand(GDT_Float32, options);
    CSLDestroy(options);
    return data;
}

void gdalLines(benchmark::State &state, fields::Kind kind) {
    GDALAllRegister();
    const int n = static_cast<int>(state.range(0));
    std::vector<float> values = fields::grid(n, kind);
    std::string levels = "FIXED_LEVELS=";
    for (const float level : fields::levels(values, 20))
        levels += CPLSPrintf("%s%.9g", levels.back() == '=' ? "" : ",", level);
    GDALDataset *data = inMemory(n, values);
    char **options = CSLAddString(nullptr, levels.c_str());
    for (auto _ : state) {
        GDALDataset *made =
            GetGDALDriverManager()->GetDriverByName("Memory")->Create("", 0, 0, 0, GDT_Unknown, nullptr);
        OGRLayer *layer = made->CreateLayer("lines", nullptr, wkbLineString, nullptr);
        GDALContourGenerateEx(GDALRasterBand::ToHandle(data->GetRasterBand(1)), OGRLayer::ToHandle(layer),
                              options, nullptr, nullptr);
        state.counters["lines"] = static_cast<double>(layer->GetFeatureCount());
        GDALClose(made);
    }
    CSLDestroy(options);
    GDALClose(data);
}

BENCHMARK_CAPTURE(gdalLines, smooth, fields::SMOOTH)->Arg(2000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(gdalLines, rough, fields::ROUGH)->Arg(2000)->Unit(benchmark::kMillisecond);

} // namespace
