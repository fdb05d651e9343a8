add_library(vesmo_platform SHARED
)
target_link_libraries(vesmo_platform PUBLIC project_options)
