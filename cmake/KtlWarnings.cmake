# Warning flags shared by every target of the project.
add_compile_options(-Wall -Wextra)
