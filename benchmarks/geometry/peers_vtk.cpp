#include "fields.h"

#include <benchmark/benchmark.h>

#include <vtkBandedPolyDataContourFilter.h>
#include <vtkCellArray.h>
#include <vtkFloatArray.h>
#include <vtkFlyingEdges2D.h>
#include <vtkImageData.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkPoints.h>
#include <vtkPolyData.h>
#include <vtkStripper.h>

namespace {

void setScalars(vtkDataSet *data, std::vector<float> &values) {
    vtkNew<vtkFloatArray> array;
    array->SetName("values");
    array->SetArray(values.data(), static_cast<vtkIdType>(values.size()), 1);
    data->GetPointData()->SetScalars(array);
}

void vtkLines(benchmark::State &state, fields::Kind kind) {
    const int n = static_cast<int>(state.range(0));
    std::vector<float> values = fields::grid(n, kind);
    const std::vector<float> levels = fields::levels(values, 20);
    vtkNew<vtkImageData> image;
    image->SetDimensions(n, n, 1);
    image->SetSpacing(1.0 / (n - 1), 1.0 / (n - 1), 1);
    setScalars(image, values);
    for (auto _ : state) {
        vtkNew<vtkFlyingEdges2D> edges;
        edges->SetInputData(image);
        for (int k = 0; k < 20; ++k)
            edges->SetValue(k, levels[k]);
        edges->ComputeScalarsOff();
        vtkNew<vtkStripper> stripper;
        stripper->SetInputConnection(edges->GetOutputPort());
        stripper->SetMaximumLength(100000);
        stripper->JoinContiguousSegmentsOn();
        stripper->Update();
        state.counters["lines"] = static_cast<double>(stripper->GetOutput()->GetNumberOfLines());
    }
}

void vtkBands(benchmark::State &state, fields::Kind kind) {
    const int n = static_cast<int>(state.range(0));
    std::vector<float> values = fields::grid(n, kind);
    const std::vector<float> levels = fields::levels(values, 20);
    vtkNew<vtkPoints> points;
    vtkNew<vtkCellArray> cells;
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j) {
            points->InsertNextPoint(static_cast<double>(j) / (n - 1), static_cast<double>(i) / (n - 1), 0);
            const vtkIdType a = static_cast<vtkIdType>(i) * n + j;
            const vtkIdType quad[4] = {a, a + 1, a + n + 1, a + n};
            if (i + 1 < n && j + 1 < n)
                cells->InsertNextCell(4, quad);
        }
    vtkNew<vtkPolyData> mesh;
    mesh->SetPoints(points);
    mesh->SetPolys(cells);
    setScalars(mesh, values);
    for (auto _ : state) {
        vtkNew<vtkBandedPolyDataContourFilter> filter;
        filter->SetInputData(mesh);
        for (int k = 0; k < 20; ++k)
            filter->SetValue(k, levels[k]);
        filter->ClippingOn();
        filter->SetScalarModeToIndex();
        filter->Update();
        state.counters["pieces"] = static_cast<double>(filter->GetOutput()->GetNumberOfPolys());
    }
}

BENCHMARK_CAPTURE(vtkLines, smooth, fields::SMOOTH)->Arg(2000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(vtkLines, rough, fields::ROUGH)->Arg(2000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(vtkBands, smooth, fields::SMOOTH)->Arg(2000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(vtkBands, rough, fields::ROUGH)->Arg(2000)->Unit(benchmark::kMillisecond);

} // namespace
